#include <gmock/gmock.h>

#include "fake/FakeEngine.h"
#include "menu/MenuFixture.h"

namespace tavin::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

using MenuControllerTest = MenuFixture;

TEST_F(MenuControllerTest, NewMenuIsEmptyAndLeavesEnablingToTheRebuild) {
  const Menu& menu = app->menuController()->menu();
  EXPECT_TRUE(menu.items.empty());
  EXPECT_FALSE(menu.autoenablesItems);
  EXPECT_EQ(menu.delegate, app->menuController());
  EXPECT_TRUE(app->menuController()->hotkeysAvailable);
}

TEST_F(MenuControllerTest, ReadyEngineGivesTheWholeMenu) {
  EXPECT_THAT(opened(), ElementsAre("Speak Selection\t⌥ Esc", "- Pause\t⇧⌥ Esc",
                                    "> Shortcut: ⌥ Esc", "---", "> Engine: eSpeak NG",
                                    "> Voice: en-gb", "> Speed: 1x", "---", "> Set API Key",
                                    "Launch at Login", "Open Engine Log", "---", "Quit Tavin"));
}

TEST_F(MenuControllerTest, StatusIsAskedOnTheMainThreadWithinFourTenths) {
  open();
  EXPECT_EQ(fakes.journal.lines().front(), "main: GET status 0.4s");
  EXPECT_EQ(fakes.engine.requests.front().deadline, 0.4);
}

TEST_F(MenuControllerTest, NoStatusGivesTheShortMenu) {
  fakes.engine.reachable = false;
  EXPECT_THAT(opened(), ElementsAre("Speak Selection\t⌥ Esc", "- Pause\t⇧⌥ Esc",
                                    "> Shortcut: ⌥ Esc", "---", "- Voice engine starting…",
                                    "Launch at Login", "Open Engine Log", "---", "Quit Tavin"));
  app->menuController()->hotkeysAvailable = false;
  EXPECT_EQ(opened()[2], "- \u26A0\uFE0E ⌥ Esc is taken by another app");
}

TEST_F(MenuControllerTest, SpeakingOffersStopAndPause) {
  fakes.engine.status["state"] = "speaking";
  EXPECT_EQ(opened()[0], "Stop\t⌥ Esc");
  EXPECT_EQ(opened()[1], "Pause\t⇧⌥ Esc");
}

TEST_F(MenuControllerTest, PausedOffersStopAndResume) {
  fakes.engine.status["state"] = "paused";
  EXPECT_EQ(opened()[0], "Stop\t⌥ Esc");
  EXPECT_EQ(opened()[1], "Resume\t⇧⌥ Esc");
}

TEST_F(MenuControllerTest, PausedIsComparedExactly) {
  fakes.engine.status["state"] = "Paused";
  EXPECT_EQ(opened()[0], "Speak Selection\t⌥ Esc");
  EXPECT_EQ(opened()[1], "- Pause\t⇧⌥ Esc");
}

TEST_F(MenuControllerTest, TakenShortcutWarnsWithItsLabel) {
  app->menuController()->hotkeysAvailable = false;
  EXPECT_EQ(opened()[2], "- \u26A0\uFE0E ⌥ Esc is taken by another app");
  fakes.userDefaults.values["shortcut"] = "ctrl-opt-r";
  EXPECT_EQ(opened()[2], "- \u26A0\uFE0E ⌃⌥ R is taken by another app");
}

TEST_F(MenuControllerTest, ShortcutMenuMarksTheCurrentPresetAndKeepsItsFixedNote) {
  fakes.userDefaults.values["shortcut"] = "ctrl-esc";
  EXPECT_THAT(submenu("Shortcut: ⌃ Esc"),
              ElementsAre("⌥ Esc", "* ⌃ Esc", "⌃⌥ R", "---", "- Hear a second, robotic voice too?",
                          "- macOS Speak Selection also uses ⌥ Esc.",
                          "- Pick ⌃ Esc or ⌃⌥ R, or turn it off in",
                          "- System Settings > Accessibility > Spoken Content."));
}

TEST_F(MenuControllerTest, OnlySpeechItemsCarryAKeyLabel) {
  open();
  fakes.settle();
  const auto& items = open();
  EXPECT_EQ(items[0].title, QStringLiteral("Speak Selection\t⌥ Esc"));
  for (std::size_t i = 2; i < items.size(); ++i) {
    EXPECT_FALSE(items[i].title.contains('\t'));
    if (!items[i].submenu)
      continue;
    for (const MenuItem& choice : items[i].submenu->items)
      EXPECT_FALSE(choice.title.contains('\t'));
  }
}

TEST_F(MenuControllerTest, ReadyEngineWithASetupErrorHasNoStatusLine) {
  fakes.engine.status["setup_error"] = "disk full";
  fakes.engine.status["download"] = 0.5;
  EXPECT_EQ(opened()[4], "> Engine: eSpeak NG");
}

TEST_F(MenuControllerTest, LongSetupErrorShowsItsFirstSixtyCharacters) {
  fakes.engine.status["ready"] = false;
  fakes.engine.status["setup_error"] = QString(100, QLatin1Char('x'));
  fakes.engine.status["download"] = 0.5;
  EXPECT_EQ(opened()[4], "- \u26A0\uFE0E Voice setup failed: " + std::string(60, 'x'));
}

TEST_F(MenuControllerTest, SetupErrorIsCutBetweenCharactersAsAReaderCountsThem) {
  fakes.engine.status["ready"] = false;
  const QString family = QStringLiteral("👩‍👩‍👧‍👦");
  const QString accented = QStringLiteral("e\u0301");
  fakes.engine.status["setup_error"] = family.repeated(59) + accented + QStringLiteral("rest");
  EXPECT_EQ(opened()[4],
            "- \u26A0\uFE0E Voice setup failed: " + (family.repeated(59) + accented).toStdString());
  fakes.engine.status["setup_error"] = "short";
  EXPECT_EQ(opened()[4], "- \u26A0\uFE0E Voice setup failed: short");
}

TEST_F(MenuControllerTest, UnreadyEngineShowsLoadingOrItsDownload) {
  fakes.engine.status["ready"] = false;
  EXPECT_EQ(opened()[4], "- Loading voices…");
  for (const auto& [download, line] : {std::pair{0.427, "- Downloading voices… 42%"},
                                       {0.999, "- Downloading voices… 99%"},
                                       {1.0, "- Downloading voices… 100%"},
                                       {0.0, "- Downloading voices… 0%"}}) {
    fakes.engine.status["download"] = download;
    EXPECT_EQ(opened()[4], line);
  }
}

TEST_F(MenuControllerTest, EngineWithoutItsKeyStaysSelectableAndMayBeCurrent) {
  fakes.engine.status["engine"] = "openai";
  EXPECT_THAT(submenu("Engine: OpenAI"), ElementsAre("eSpeak NG", "* OpenAI (add API key)"));
  EXPECT_FALSE(item("Engine").submenu->items[1].enabled);
}

TEST_F(MenuControllerTest, CurrentEngineMissingFromTheListShowsItsRawName) {
  fakes.engine.status["engine"] = "other_one";
  EXPECT_THAT(submenu("Engine: other_one"), ElementsAre("eSpeak NG", "OpenAI (add API key)"));
}

TEST_F(MenuControllerTest, VoicesAreLoadingAtFirstAndThereAtTheNextOpening) {
  EXPECT_THAT(submenu("Voice: en-gb"), ElementsAre("- Loading…"));
  openAndSettle();
  EXPECT_THAT(submenu("Voice: British"), ElementsAre("* British", "German"));
}

TEST_F(MenuControllerTest, OpeningRefreshesTheVoicesOfTheCurrentEngineInTheBackground) {
  openAndSettle();
  EXPECT_EQ(fakes.journal.starting("global: GET"),
            std::vector<std::string>{"global: GET voices?engine=espeak 20s"});
}

TEST_F(MenuControllerTest, MeasuringItAsksForAShortStatusAloneAndShowsTheSameLines) {
  openAndSettle();
  const auto lines = opened();
  fakes.settle();
  fakes.journal.clear();
  Menu& menu = app->menuController()->menu();
  menu.delegate->menuNeedsMeasuring(menu);
  fakes.settle();
  EXPECT_EQ(describe(menu), lines);
  EXPECT_EQ(fakes.journal.lines(), std::vector<std::string>{"main: GET status 0.05s"});
}

TEST_F(MenuControllerTest, MeasuringItWhileTheEngineIsBusyLeavesItsLines) {
  const auto lines = opened();
  fakes.engine.answers.erase("status");
  Menu& menu = app->menuController()->menu();
  menu.delegate->menuNeedsMeasuring(menu);
  EXPECT_EQ(describe(menu), lines);
}

TEST_F(MenuControllerTest, UnknownVoiceShowsItsRawId) {
  openAndSettle();
  fakes.engine.status["voice"] = "xx";
  EXPECT_THAT(submenu("Voice: xx"), ElementsAre("British", "German"));
}

TEST_F(MenuControllerTest, SpeedsAreTheFixedEightWithTheCurrentOneMarked) {
  EXPECT_THAT(submenu("Speed: 1x"),
              ElementsAre("0.8x", "0.9x", "* 1x", "1.1x", "1.25x", "1.5x", "1.75x", "2x"));
}

TEST_F(MenuControllerTest, SpeedOutsideTheListIsShownAndMarksNothing) {
  fakes.engine.status["speed"] = 1.3;
  EXPECT_THAT(submenu("Speed: 1.3x"), Not(Contains(StartsWith("*"))));
}

TEST_F(MenuControllerTest, SpeedsCloserThanAThousandthAreTheSame) {
  fakes.engine.status["speed"] = 1.2509;
  EXPECT_THAT(submenu("Speed: 1.2509x"), Contains("* 1.25x"));
  fakes.engine.status["speed"] = 1.2511;
  EXPECT_THAT(submenu("Speed: 1.2511x"), Not(Contains(StartsWith("*"))));
}

TEST_F(MenuControllerTest, KeyMenuOffersBothCloudEngines) {
  EXPECT_THAT(submenu("Set API Key"), ElementsAre("ElevenLabs…", "OpenAI…"));
}

TEST_F(MenuControllerTest, LoginItemIsMarkedOnlyWhenEnabled) {
  for (const auto status : {LoginItemStatus::notRegistered, LoginItemStatus::requiresApproval,
                            LoginItemStatus::notFound}) {
    fakes.loginItem.current = status;
    EXPECT_FALSE(item("Launch at Login").state);
  }
  fakes.loginItem.current = LoginItemStatus::enabled;
  EXPECT_TRUE(item("Launch at Login").state);
}

TEST_F(MenuControllerTest, ItemsCarryWhatTheirCommandsRead) {
  openAndSettle();
  using Object = std::variant<std::monostate, QString, double>;
  EXPECT_EQ(item("Shortcut").submenu->items[2].representedObject, Object("ctrl-opt-r"));
  EXPECT_EQ(item("Engine").submenu->items[1].representedObject, Object("openai"));
  EXPECT_EQ(item("Voice").submenu->items[1].representedObject, Object("de"));
  EXPECT_EQ(item("Speed").submenu->items[4].representedObject, Object(1.25));
}

TEST_F(MenuControllerTest, EachOpeningStartsFromScratch) {
  fakes.engine.status["ready"] = false;
  open();
  fakes.engine.status["ready"] = true;
  EXPECT_EQ(opened().size(), 13U);
  EXPECT_EQ(opened().size(), 13U);
}

}  // namespace
}  // namespace tavin::test
