#include <gmock/gmock.h>

#include "fake/LaunchedApp.h"
#include "hotkeys/ShortcutPreset.h"
#include "menu/MenuController.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;

class AppDelegateTest : public LaunchedApp {};

TEST_F(AppDelegateTest, ConstructionStartsNothing) {
  EXPECT_THAT(lines(), ElementsAre());
  EXPECT_EQ(app->menuController(), nullptr);
}

TEST_F(AppDelegateTest, LaunchDoesEverythingInOrder) {
  fakes.engine.reachable = false;
  fakes.platform.bundle.info = {{"TavinEngineDir", "/engine"}};
  app->applicationDidFinishLaunching();
  EXPECT_THAT(lines(),
              ElementsAre("main: make status item", "main: icon waveform (Tavin)", "main: setMenu",
                          "main: GET status 0.5s", "main: launch /engine/.venv/bin/python",
                          "main: install hotkey handler", "main: grab 53+2048 id 1",
                          "main: grab 53+2560 id 2", "main: trusted? prompt=0"));
  EXPECT_EQ(fakes.statusItem->attached, &app->menuController()->menu());
}

TEST_F(AppDelegateTest, LaunchWithThePermissionChecksOnceWithoutPrompt) {
  app->applicationDidFinishLaunching();
  EXPECT_THAT(fakes.journal.starting("main: trusted?"), ElementsAre("main: trusted? prompt=0"));
}

TEST_F(AppDelegateTest, LaunchWithoutThePermissionChecksTwiceAndPromptsTheSecondTime) {
  fakes.accessibility.trusted = false;
  app->applicationDidFinishLaunching();
  EXPECT_THAT(fakes.journal.starting("main: trusted?"),
              ElementsAre("main: trusted? prompt=0", "main: trusted? prompt=1"));
  EXPECT_TRUE(fakes.alerts.shown.empty());
}

TEST_F(AppDelegateTest, TakenCombinationStillTriesBothAndMakesShortcutsUnavailable) {
  fakes.hotkeys.refuse(53, 2048, 10);
  app->applicationDidFinishLaunching();
  EXPECT_THAT(fakes.journal.starting("main: grab"),
              ElementsAre("main: grab 53+2048 id 1", "main: grab 53+2560 id 1"));
  EXPECT_FALSE(app->menuController()->hotkeysAvailable);
}

TEST_F(AppDelegateTest, TakenShiftVariantLeavesSpeakWorkingButShortcutsUnavailable) {
  fakes.hotkeys.refuse(53, 2560, 10);
  launch();
  EXPECT_FALSE(app->menuController()->hotkeysAvailable);
  fakes.hotkeys.press(1);
  fakes.settle();
  EXPECT_EQ(fakes.journal.count("work: GET status 1s"), 2);
}

TEST_F(AppDelegateTest, AnotherPresetReplacesBothShortcutsAndRecomputesAvailability) {
  fakes.hotkeys.refuse(53, 2048, 10);
  launch();
  ASSERT_FALSE(app->menuController()->hotkeysAvailable);
  fakes.userDefaults.values["shortcut"] = "ctrl-opt-r";
  app->registerHotkeys();
  EXPECT_THAT(lines(), ElementsAre("main: ungrab id 1", "main: grab 15+6144 id 1",
                                   "main: grab 15+6656 id 2"));
  EXPECT_TRUE(app->menuController()->hotkeysAvailable);
}

TEST_F(AppDelegateTest, LateAnswersCorrectTheAvailabilityOfTheShortcuts) {
  fakes.hotkeys.answerLater(53, 2048);
  fakes.hotkeys.answerLater(53, 2560);
  launch();
  EXPECT_FALSE(app->menuController()->hotkeysAvailable);
  fakes.hotkeys.answer(0, 0);
  EXPECT_FALSE(app->menuController()->hotkeysAvailable);
  fakes.hotkeys.answer(1, 0);
  EXPECT_TRUE(app->menuController()->hotkeysAvailable);
  fakes.hotkeys.answer(1, -1);
  EXPECT_FALSE(app->menuController()->hotkeysAvailable);
}

TEST_F(AppDelegateTest, LateAnswerForAPresetThatWasChangedMeanwhileChangesNothing) {
  fakes.hotkeys.answerLater(53, 2048);
  launch();
  fakes.userDefaults.values["shortcut"] = "ctrl-opt-r";
  app->registerHotkeys();
  ASSERT_TRUE(app->menuController()->hotkeysAvailable);
  fakes.hotkeys.answer(0, -1);
  EXPECT_TRUE(app->menuController()->hotkeysAvailable);
}

TEST_F(AppDelegateTest, LateAnswerAfterQuitChangesNothing) {
  fakes.hotkeys.answerLater(53, 2048);
  launch();
  app->applicationWillTerminate();
  fakes.settle();
  app.reset();
  fakes.work = nullptr;  // It went with the controller.
  fakes.journal.clear();
  fakes.hotkeys.answer(0, 0);
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre());
}

TEST_F(AppDelegateTest, PresetThatContainsShiftRegistersTheSameCombinationTwice) {
  launch();
  app->registerHotkeys({QStringLiteral("shifted"), QStringLiteral("label"), 53, 0x0A00});
  EXPECT_THAT(fakes.journal.starting("main: grab"),
              ElementsAre("main: grab 53+2560 id 1", "main: grab 53+2560 id 2"));
}

TEST_F(AppDelegateTest, QuittingWhileSpeakingEndsTheEngineWithoutPostingStop) {
  fakes.engine.reachable = false;
  fakes.platform.bundle.info = {{"TavinEngineDir", "/engine"}};
  launch();
  fakes.engine.reachable = true;
  fakes.engine.status["state"] = "speaking";
  app->applicationWillTerminate();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("main: terminate engine"));
}

TEST_F(AppDelegateTest, IconIsTheIdleSymbolAgainAfterActiveAndIdle) {
  fakes.accessibility.selectedText = QStringLiteral("text");
  launch();
  app->speakSelection();
  fakes.settle();
  app->stop();
  fakes.settle();
  EXPECT_THAT(
      fakes.journal.starting("main: icon"),
      ElementsAre("main: icon waveform.circle.fill (Tavin)", "main: icon waveform (Tavin)"));
}

TEST_F(AppDelegateTest, ShortcutHandlersDoNothingOnceTheControllerIsGone) {
  launch();
  app.reset();
  fakes.work = nullptr;  // It went with the controller.
  fakes.hotkeys.press(1);
  fakes.hotkeys.press(2);
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre());
}

TEST_F(AppDelegateTest, SecondShortcutPausesAndResumes) {
  launch();
  fakes.hotkeys.press(2);
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("work: POST toggle-pause {}"));
}

TEST_F(AppDelegateTest, RemoteActionsDoWhatShortcutsAndMenuDo) {
  launch();
  fakes.remoteControl.actions.togglePause();
  fakes.remoteControl.actions.stop();
  fakes.remoteControl.actions.activate();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("main: popUpMenu", "work: POST toggle-pause {}",
                                   "work: POST stop {}", "main: icon waveform (Tavin)"));
}

TEST_F(AppDelegateTest, RemoteActionsGoAboutInTheText) {
  launch();
  const RemoteActions& actions = fakes.remoteControl.actions;
  for (const auto& action :
       {actions.nextSentence, actions.previousSentence, actions.nextParagraph,
        actions.previousParagraph, actions.repeatSentence, actions.faster, actions.slower})
    action();
  fakes.settle();
  EXPECT_THAT(lines(),
              ElementsAre("work: POST next {}", "work: POST previous {}",
                          R"(work: POST next {"by":"paragraph"})",
                          R"(work: POST previous {"by":"paragraph"})", "work: POST repeat {}",
                          "work: POST faster {}", "work: POST slower {}"));
}

using AppDelegateDeathTest = AppDelegateTest;

TEST_F(AppDelegateDeathTest, RegisteringShortcutsBeforeLaunchStopsTheProcess) {
  EXPECT_DEATH(app->registerHotkeys(), "no menu before launch");
}

}  // namespace
}  // namespace tavin::test
