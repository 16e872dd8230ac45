#include <gmock/gmock.h>

#include <QDir>

#include "menu/MenuFixture.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class MenuCommandsTest : public MenuFixture {
 protected:
  // Opens the key dialog of a cloud engine and answers it.
  void answerKeyDialog(const QString& entry, const AlertResponse& response) {
    choose("Set API Key", entry);
    fakes.alerts.answer(response);
  }
};

TEST_F(MenuCommandsTest, SpeechItemsDoWhatTheShortcutsDo) {
  choose("Speak Selection");
  fakes.settle();
  EXPECT_EQ(fakes.journal.count("work: GET status 1s"), 2);
  fakes.engine.status["state"] = "paused";
  choose("Resume");
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("work: POST toggle-pause {}"));
}

TEST_F(MenuCommandsTest, SpeedSendsExactlyOnePost) {
  choose("Speed", "1.25x");
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("global: POST config {\"speed\":1.25}"));
}

TEST_F(MenuCommandsTest, VoiceSendsExactlyOnePost) {
  openAndSettle();
  choose("Voice", "German");
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("global: POST config {\"voice\":\"de\"}"));
}

TEST_F(MenuCommandsTest, EngineSendsOnePostAndFetchesItsVoicesInEitherOrder) {
  choose("Engine", "eSpeak NG");
  EXPECT_THAT(lines(), IsEmpty());
  EXPECT_EQ(fakes.globalQueue.pending(), 2U);
  fakes.settle();
  EXPECT_THAT(lines(), UnorderedElementsAre("global: POST config {\"engine\":\"espeak\"}",
                                            "global: GET voices?engine=espeak 20s"));
}

TEST_F(MenuCommandsTest, EngineWithoutItsKeyIsSentAllTheSame) {
  choose("Engine", "OpenAI (add API key)");
  fakes.settle();
  EXPECT_EQ(fakes.journal.count("global: POST config {\"engine\":\"openai\"}"), 1);
}

TEST_F(MenuCommandsTest, EmptyVoiceListLeavesTheEarlierOneInPlace) {
  openAndSettle();
  for (const auto& answer : {UrlResponse{200, QByteArray("[]")}, UrlResponse{500, QByteArray()}}) {
    fakes.engine.answers["voices"] = answer;
    openAndSettle();
    EXPECT_THAT(submenu("Voice"), ElementsAre("* British", "German"));
  }
}

TEST_F(MenuCommandsTest, VoiceListIsReplacedWholeAndKeptForEachEngine) {
  openAndSettle();
  fakes.engine.status["engine"] = "openai";
  EXPECT_THAT(submenu("Voice"), ElementsAre("- Loading…"));
  fakes.settle();
  fakes.engine.status["engine"] = "espeak";
  fakes.engine.answerWith("voices", 200, QByteArray(R"([{"id":"fr","name":"French"}])"));
  openAndSettle();
  EXPECT_THAT(submenu("Voice"), ElementsAre("French"));
}

TEST_F(MenuCommandsTest, VoicesThatArriveAfterTheControllerIsGoneAreDropped) {
  open();
  fakes.globalQueue.runOne();  // Fetched; the list waits on the main queue.
  open();                      // Another fetch that has not begun.
  app.reset();
  fakes.journal.clear();
  while (fakes.globalQueue.runOne() || fakes.mainQueue.queue.runOne()) {
  }
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(MenuCommandsTest, ShortcutIsStoredBeforeItIsRegistered) {
  choose("Shortcut", "⌃⌥ R");
  EXPECT_THAT(lines(), ElementsAre("main: store shortcut=ctrl-opt-r", "main: ungrab id 1",
                                   "main: ungrab id 2", "main: grab 15+6144 id 1",
                                   "main: grab 15+6656 id 2"));
}

TEST_F(MenuCommandsTest, ShortcutThatCannotBeRegisteredWarnsAtTheNextOpening) {
  fakes.hotkeys.refuse(53, 4096, 10);
  choose("Shortcut", "⌃ Esc");
  EXPECT_EQ(fakes.userDefaults.values["shortcut"], QStringLiteral("ctrl-esc"));
  EXPECT_EQ(opened()[2], "- \u26A0\uFE0E ⌃ Esc is taken by another app");
}

TEST_F(MenuCommandsTest, ItemWithoutTheExpectedValueDoesNothing) {
  for (const MenuAction action : {MenuAction::selectShortcut, MenuAction::selectEngine,
                                  MenuAction::selectVoice, MenuAction::selectSpeed}) {
    MenuItem bare;
    bare.action = action;
    pick(bare);
    bare.representedObject =
        action == MenuAction::selectSpeed ? decltype(bare.representedObject)("1.25") : 1.25;
    pick(bare);
    fakes.settle();
    EXPECT_THAT(lines(), IsEmpty());
  }
}

TEST_F(MenuCommandsTest, KeyDialogNamesItsEngineAndAsksWithAMaskedEmptyField) {
  choose("Set API Key", "ElevenLabs…");
  ASSERT_EQ(fakes.alerts.shown.size(), 1U);
  const Alert& alert = fakes.alerts.shown[0];
  EXPECT_EQ(alert.messageText, QStringLiteral("ElevenLabs API key"));
  EXPECT_EQ(alert.informativeText,
            QStringLiteral("Stored in your macOS Keychain. Leave empty to remove the key."));
  EXPECT_EQ(alert.buttons, QStringList({"Save", "Cancel"}));
  EXPECT_TRUE(alert.secureField);
  EXPECT_THAT(lines(), ElementsAre("main: activate", "main: alert ElevenLabs API key"));
  choose("Set API Key", "OpenAI…");
  EXPECT_EQ(fakes.alerts.shown[1].messageText, QStringLiteral("OpenAI API key"));
}

TEST_F(MenuCommandsTest, SavedKeyIsPostedThenItsEngineChosenInOneWorkItem) {
  answerKeyDialog("ElevenLabs…", {.button = AlertResponse::firstButton, .text = "  s3cret "});
  EXPECT_EQ(fakes.globalQueue.pending(), 1U);
  fakes.journal.clear();
  fakes.settle();
  EXPECT_THAT(lines(),
              ElementsAre("global: POST key {\"engine\":\"elevenlabs\",\"key\":\"  s3cret \"}",
                          "global: POST config {\"engine\":\"elevenlabs\"}"));
}

TEST_F(MenuCommandsTest, KeyWithLeadingAndTrailingSpacesIsPostedUnchanged) {
  answerKeyDialog("OpenAI…", {.button = AlertResponse::firstButton, .text = " \tkey  "});
  fakes.journal.clear();
  fakes.settle();
  EXPECT_THAT(lines(),
              testing::Contains("global: POST key {\"engine\":\"openai\",\"key\":\" \\tkey  \"}"));
}

TEST_F(MenuCommandsTest, EmptyKeyIsPostedAloneAndChoosesNoEngine) {
  answerKeyDialog("OpenAI…", {.button = AlertResponse::firstButton, .text = ""});
  fakes.journal.clear();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("global: POST key {\"engine\":\"openai\",\"key\":\"\"}"));
}

TEST_F(MenuCommandsTest, CancelledOrClosedKeyDialogSendsNothingAndKeepsTheVoices) {
  fakes.engine.status["engine"] = "openai";
  openAndSettle();
  for (const int button : {AlertResponse::firstButton + 1, 0}) {
    answerKeyDialog("OpenAI…", {.button = button, .text = "typed"});
    fakes.settle();
    EXPECT_TRUE(fakes.journal.starting("global: POST").empty());
    EXPECT_THAT(submenu("Voice"), ElementsAre("* British", "German"));
  }
}

TEST_F(MenuCommandsTest, SavedKeyForgetsTheVoicesAtOnceWhileThePostsAreStillUnderWay) {
  fakes.engine.status["engine"] = "openai";
  openAndSettle();
  answerKeyDialog("OpenAI…", {.button = AlertResponse::firstButton, .text = "key"});
  EXPECT_THAT(submenu("Voice"), ElementsAre("- Loading…"));
}

TEST_F(MenuCommandsTest, LoginItemIsUnregisteredOnlyWhenEnabled) {
  fakes.loginItem.current = LoginItemStatus::enabled;
  choose("Launch at Login");
  EXPECT_THAT(lines(), ElementsAre("main: unregister login item"));
  for (const auto status : {LoginItemStatus::notRegistered, LoginItemStatus::requiresApproval,
                            LoginItemStatus::notFound}) {
    fakes.loginItem.current = status;
    choose("Launch at Login");
    EXPECT_THAT(lines(), ElementsAre("main: register login item"));
  }
}

TEST_F(MenuCommandsTest, FailedLoginItemChangeAlerts) {
  fakes.loginItem.failure = QStringLiteral("the folder is read-only");
  choose("Launch at Login");
  ASSERT_EQ(fakes.alerts.shown.size(), 1U);
  EXPECT_EQ(fakes.alerts.shown[0].messageText, QStringLiteral("Tavin couldn't read that"));
  EXPECT_EQ(fakes.alerts.shown[0].informativeText,
            QStringLiteral("Launch at Login failed: the folder is read-only"));
}

TEST_F(MenuCommandsTest, LogIsOpenedUnderTheHomeDirectory) {
  choose("Open Engine Log");
  EXPECT_THAT(lines(), ElementsAre("main: open " + QDir::homePath().toStdString() +
                                   "/Library/Logs/Tavin/engine.log"));
}

TEST_F(MenuCommandsTest, QuitTerminatesWithoutAsking) {
  choose("Quit Tavin");
  EXPECT_THAT(lines(), ElementsAre("main: terminate"));
}

}  // namespace
}  // namespace tavin::test
