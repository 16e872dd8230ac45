#include <gmock/gmock.h>

#include <cmath>

#include "fake/LaunchedApp.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;

class SpeechActionsTest : public LaunchedApp {
 protected:
  SpeechActionsTest() { launch(); }

  void kokoro(QJsonObject more) {
    fakes.engine.status["engine"] = "kokoro";
    fakes.engine.status["ready"] = false;
    for (auto entry = more.begin(); entry != more.end(); ++entry)
      fakes.engine.status[entry.key()] = entry.value();
  }
  std::vector<std::string> errors() const {
    std::vector<std::string> texts;
    for (const Alert& alert : fakes.alerts.shown)
      texts.push_back(alert.informativeText.toStdString());
    return texts;
  }
  void speak() {
    app->speakOrStop();
    fakes.settle();
  }
  // One tick of a watch, its poll and its evaluation.
  void tick(std::size_t timer) {
    fakes.mainQueue.tick(timer);
    fakes.settle();
  }
  void select(const QString& text) { fakes.accessibility.selectedText = text; }
};

TEST_F(SpeechActionsTest, OnePressAsksTwiceCapturesPostsAndWatches) {
  select(QStringLiteral("Hear me"));
  speak();
  EXPECT_THAT(lines(),
              ElementsAre("work: GET status 1s", "work: GET status 1s", "work: trusted? prompt=0",
                          "work: messaging timeout 0.3", "work: copy AXFocusedUIElement",
                          "work: copy AXSelectedText", "work: POST speak {\"text\":\"Hear me\"}",
                          "main: icon waveform.circle.fill (Tavin)"));
  ASSERT_EQ(fakes.mainQueue.timers.size(), 1U);
  EXPECT_EQ(fakes.mainQueue.timers[0]->interval, 0.75);
}

TEST_F(SpeechActionsTest, CommandsOnlyQueueOneItemEach) {
  app->speakOrStop();
  app->speakSelection();
  app->togglePause();
  app->stop();
  EXPECT_EQ(fakes.work->pending(), 4U);
  EXPECT_THAT(lines(), ElementsAre());
}

TEST_F(SpeechActionsTest, SelectionIsPostedUntrimmed) {
  select(QStringLiteral("  two\nlines \n"));
  speak();
  EXPECT_EQ(fakes.journal.count("work: POST speak {\"text\":\"  two\\nlines \\n\"}"), 1);
}

TEST_F(SpeechActionsTest, PressWhileSpeakingPostsStopAndShowsIdleWithoutReadingTheSelection) {
  fakes.engine.status["state"] = "speaking";
  speak();
  EXPECT_THAT(lines(), ElementsAre("work: GET status 1s", "work: POST stop {}",
                                   "main: icon waveform (Tavin)"));
}

TEST_F(SpeechActionsTest, PressWhilePausedPostsStopToo) {
  fakes.engine.status["state"] = "paused";
  speak();
  EXPECT_EQ(fakes.journal.count("work: POST stop {}"), 1);
}

TEST_F(SpeechActionsTest,
       UnreachableEngineGetsTwoStatusRequestsAndASpeakAndTheIconIsIdleAfterATick) {
  fakes.engine.reachable = false;
  select(QStringLiteral("text"));
  speak();
  EXPECT_EQ(fakes.journal.count("work: GET status 1s"), 2);
  EXPECT_EQ(fakes.journal.count("work: POST speak {\"text\":\"text\"}"), 1);
  EXPECT_EQ(lines().back(), "main: icon waveform.circle.fill (Tavin)");
  tick(0);
  EXPECT_EQ(lines().back(), "main: icon waveform (Tavin)");
  EXPECT_EQ(fakes.mainQueue.validTimers(), 0);
}

TEST_F(SpeechActionsTest, DownloadingLocalVoiceIsExplainedWithItsPercentage) {
  kokoro({{"download", 0.456}});
  speak();
  EXPECT_THAT(errors(), ElementsAre("Tavin is downloading its voices (45%). This happens once."));
  kokoro({{"download", 0}});
  speak();
  EXPECT_EQ(errors().back(), "Tavin is downloading its voices (0%). This happens once.");
  EXPECT_TRUE(fakes.journal.starting("work: POST").empty());
  EXPECT_TRUE(fakes.journal.starting("work: copy").empty());
}

TEST_F(SpeechActionsTest, PercentageIsTruncatedAndNotClamped) {
  kokoro({{"download", 0.999}});
  speak();
  kokoro({{"download", 1.5}});
  speak();
  EXPECT_THAT(errors(), ElementsAre("Tavin is downloading its voices (99%). This happens once.",
                                    "Tavin is downloading its voices (150%). This happens once."));
}

TEST_F(SpeechActionsTest, DownloadWinsOverASetupError) {
  kokoro({{"download", 0.5}, {"setup_error", "disk full"}});
  speak();
  EXPECT_THAT(errors(), ElementsAre("Tavin is downloading its voices (50%). This happens once."));
}

TEST_F(SpeechActionsTest, SetupErrorIsShownInFull) {
  kokoro({{"setup_error", QString(100, QLatin1Char('x'))}});
  speak();
  EXPECT_THAT(errors(), ElementsAre("Voice setup failed: " + std::string(100, 'x')));
}

TEST_F(SpeechActionsTest, LoadingLocalVoiceAsksToTryAgain) {
  kokoro({});
  speak();
  EXPECT_THAT(errors(),
              ElementsAre("Tavin is still loading its voices. Try again in a few seconds."));
}

TEST_F(SpeechActionsTest, OtherBackEndsThatAreNotReadyAreNotGated) {
  select(QStringLiteral("text"));
  for (const char* name : {"Kokoro", "kokoro ", "openai"}) {
    kokoro({{"engine", name}});
    speak();
  }
  EXPECT_EQ(fakes.journal.count("work: POST speak {\"text\":\"text\"}"), 3);
  EXPECT_TRUE(errors().empty());
}

TEST_F(SpeechActionsTest, SameGateMessageTwiceGivesOneAlertAndAgainAfterADifferentOne) {
  kokoro({});
  speak();
  speak();
  EXPECT_EQ(errors().size(), 1U);
  kokoro({{"download", 0.1}});
  speak();
  fakes.engine.status.remove("download");
  speak();
  EXPECT_EQ(errors().size(), 3U);
}

TEST_F(SpeechActionsTest, NothingSelectedBeepsFromTheWorkQueueAndDoesNothingElse) {
  speak();
  EXPECT_EQ(fakes.journal.count("work: beep"), 1);
  EXPECT_TRUE(errors().empty());
  EXPECT_TRUE(fakes.journal.starting("main: icon").empty());
  EXPECT_TRUE(fakes.journal.starting("work: POST").empty());
}

TEST_F(SpeechActionsTest, MissingPermissionShowsTheHelpEveryTimeAndCapturesNothing) {
  fakes.accessibility.trusted = false;
  select(QStringLiteral("text"));
  speak();
  speak();
  EXPECT_EQ(fakes.journal.count("main: alert Tavin needs Accessibility access"), 2);
  EXPECT_TRUE(fakes.journal.starting("work: copy").empty());
  EXPECT_TRUE(fakes.journal.starting("work: beep").empty());
}

TEST_F(SpeechActionsTest, TogglePauseLeavesIconAndWatcherAlone) {
  select(QStringLiteral("text"));
  speak();
  fakes.journal.clear();
  app->togglePause();
  fakes.settle();
  app->togglePause();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("work: POST toggle-pause {}", "work: POST toggle-pause {}"));
  EXPECT_EQ(fakes.mainQueue.validTimers(), 1);
}

TEST_F(SpeechActionsTest, WatcherKeepsTheIconActiveUntilTheEngineIsIdle) {
  select(QStringLiteral("text"));
  speak();
  fakes.journal.clear();
  for (const char* state : {"loading", "speaking", "paused"}) {
    fakes.engine.status["state"] = state;
    tick(0);
  }
  EXPECT_THAT(lines(), ElementsAre("work: GET status 0.5s", "work: GET status 0.5s",
                                   "work: GET status 0.5s"));
  fakes.engine.status["state"] = "idle";
  tick(0);
  EXPECT_EQ(lines().back(), "main: icon waveform (Tavin)");
  EXPECT_EQ(fakes.mainQueue.validTimers(), 0);
}

TEST_F(SpeechActionsTest, EngineErrorWhileSpeakingIsShownOnceAndTheIconStaysActive) {
  select(QStringLiteral("text"));
  speak();
  fakes.engine.status["state"] = "speaking";
  fakes.engine.status["error"] = "voice lost";
  fakes.journal.clear();
  tick(0);
  tick(0);
  EXPECT_THAT(errors(), ElementsAre("voice lost"));
  EXPECT_TRUE(fakes.journal.starting("main: icon").empty());
  EXPECT_EQ(fakes.mainQueue.validTimers(), 1);
}

TEST_F(SpeechActionsTest, EngineErrorOfAnIdleEngineIsShownAndTheIconTurnsIdle) {
  select(QStringLiteral("text"));
  speak();
  fakes.engine.status["error"] = "no sound";
  tick(0);
  EXPECT_THAT(errors(), ElementsAre("no sound"));
  EXPECT_TRUE(fakes.journal.starting("main: icon waveform (").empty());
  fakes.alerts.answer({});
  EXPECT_EQ(lines().back(), "main: icon waveform (Tavin)");
  EXPECT_EQ(fakes.mainQueue.validTimers(), 0);
}

TEST_F(SpeechActionsTest, WhileAnErrorIsNotAnsweredNoOtherIsLookedFor) {
  select(QStringLiteral("text"));
  speak();
  fakes.engine.status["state"] = "speaking";
  for (const char* error : {"first", "second", "third"}) {
    fakes.engine.status["error"] = error;
    tick(0);
  }
  EXPECT_THAT(errors(), ElementsAre("first"));
  fakes.alerts.answer({});
  tick(0);
  EXPECT_THAT(errors(), ElementsAre("first", "third"));
}

TEST_F(SpeechActionsTest, TwoPollsThatFindOneErrorShowItOnceAndTheIconWaitsForItsAnswer) {
  select(QStringLiteral("text"));
  speak();
  fakes.engine.status["error"] = "no sound";
  fakes.mainQueue.tick(0);
  fakes.mainQueue.tick(0);
  fakes.settle();
  EXPECT_THAT(errors(), ElementsAre("no sound"));
  EXPECT_TRUE(fakes.journal.starting("main: icon waveform (").empty());
  fakes.alerts.answer({});
  EXPECT_EQ(lines().back(), "main: icon waveform (Tavin)");
}

TEST_F(SpeechActionsTest, ARepeatedErrorHoldsNothingUp) {
  select(QStringLiteral("text"));
  speak();
  app->showError(QStringLiteral("no sound"));
  fakes.engine.status["error"] = "no sound";
  tick(0);
  EXPECT_THAT(errors(), ElementsAre("no sound"));
  EXPECT_EQ(lines().back(), "main: icon waveform (Tavin)");
}

TEST_F(SpeechActionsTest, SecondSpeechReplacesTheTimer) {
  select(QStringLiteral("text"));
  speak();
  speak();
  ASSERT_EQ(fakes.mainQueue.timers.size(), 2U);
  EXPECT_FALSE(fakes.mainQueue.timers[0]->valid);
  EXPECT_TRUE(fakes.mainQueue.timers[1]->valid);
}

TEST_F(SpeechActionsTest, LateEvaluationOfAnOldTickTurnsTheIconIdleAndTheNewerTimerGoesOn) {
  select(QStringLiteral("text"));
  speak();
  app->speakSelection();
  fakes.work->runOne();     // Posted; the newer watch is about to begin on the main queue.
  fakes.mainQueue.tick(0);  // The older one ticks once more before that,
  fakes.work->runOne();     // and its poll still finds the engine idle.
  fakes.journal.clear();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("main: icon waveform.circle.fill (Tavin)",
                                   "main: icon waveform (Tavin)"));
  EXPECT_FALSE(fakes.mainQueue.timers[0]->valid);
  EXPECT_TRUE(fakes.mainQueue.timers[1]->valid);
}

TEST_F(SpeechActionsTest, TicksAreNotCoalesced) {
  select(QStringLiteral("text"));
  speak();
  fakes.engine.status["state"] = "speaking";
  fakes.mainQueue.tick(0);
  fakes.mainQueue.tick(0);
  fakes.mainQueue.tick(0);
  EXPECT_EQ(fakes.work->pending(), 3U);
  fakes.settle();
  EXPECT_EQ(fakes.journal.count("work: GET status 0.5s"), 3);
}

TEST_F(SpeechActionsTest, TickAfterTheControllerIsGoneEndsTheTimer) {
  select(QStringLiteral("text"));
  speak();
  app.reset();
  fakes.journal.clear();
  fakes.mainQueue.tick(0);
  EXPECT_THAT(lines(), ElementsAre());
  EXPECT_EQ(fakes.mainQueue.validTimers(), 0);
}

TEST_F(SpeechActionsTest, QueuedWorkKeepsTheControllerAlive) {
  const std::weak_ptr weak = app;
  app->togglePause();
  app.reset();
  EXPECT_FALSE(weak.expired());
  // The queue dies with its owner, after its task has run.
  const auto owner = weak.lock();
  fakes.work->runOne();
  EXPECT_EQ(fakes.journal.count("work: POST toggle-pause {}"), 1);
  EXPECT_EQ(owner.use_count(), 1);
}

TEST_F(SpeechActionsTest, StopPostsStopAndShowsIdle) {
  app->stop();
  fakes.settle();
  EXPECT_THAT(lines(), ElementsAre("work: POST stop {}", "main: icon waveform (Tavin)"));
}

using SpeechActionsDeathTest = SpeechActionsTest;

TEST_F(SpeechActionsDeathTest, DownloadBeyondAnIntegerStopsTheProcessWithOneLine) {
  kokoro({{"download", 1e30}});
  EXPECT_DEATH(speak(), "^Tavin: fatal: the engine's download is no fraction\n$");
  kokoro({{"download", -1e30}});
  EXPECT_DEATH(speak(), "download is no fraction");
}

}  // namespace
}  // namespace tavin::test
