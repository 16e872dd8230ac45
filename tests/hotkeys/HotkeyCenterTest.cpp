#include <gmock/gmock.h>

#include "fake/FakeQueues.h"
#include "fake/FakeServices.h"
#include "hotkeys/HotkeyCenter.h"

namespace tavin::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

class HotkeyCenterTest : public ::testing::Test {
 protected:
  bool add(
      std::int64_t key, std::int64_t modifiers, std::function<void()> handler = [] {}) {
    return center.registerHotkey(key, modifiers, std::move(handler));
  }
  void press(std::uint32_t id) { service.press(id); }
  void settle() {
    while (mainQueue.queue.runOne()) {
    }
  }

  Journal journal;
  FakeHotkeyService service{journal};
  FakeMainQueue mainQueue{journal};
  FakeLog log;
  HotkeyCenter center{service, mainQueue, log};
};

TEST_F(HotkeyCenterTest, HandlerIsInstalledOnceForTheProcess) {
  add(53, 2048);
  add(53, 2560);
  center.unregisterAll();
  add(53, 2048);
  EXPECT_EQ(journal.count("main: install hotkey handler"), 1);
  EXPECT_EQ(journal.lines().front(), "main: install hotkey handler");
}

TEST_F(HotkeyCenterTest, FailedInstallationIsIgnoredAndNotTriedAgain) {
  service.installStatus = -9860;
  EXPECT_TRUE(add(53, 2048));
  EXPECT_TRUE(add(53, 2560));
  EXPECT_EQ(journal.count("main: install hotkey handler"), 1);
}

TEST_F(HotkeyCenterTest, IdsStartAtOneAgainAfterUnregisterAll) {
  add(53, 2048);
  add(53, 2560);
  center.unregisterAll();
  journal.clear();
  add(15, 6144);
  add(15, 6656);
  EXPECT_THAT(journal.lines(), ElementsAre("main: grab 15+6144 id 1", "main: grab 15+6656 id 2"));
  EXPECT_THAT(service.signatures, Each(0x5441564EU));
}

TEST_F(HotkeyCenterTest, RefusedSpeakShortcutLeavesIdOneToThePauseShortcut) {
  service.refuse(53, 2048, 10);
  EXPECT_FALSE(add(53, 2048));
  EXPECT_TRUE(add(53, 2560));
  EXPECT_THAT(journal.starting("main: grab"),
              ElementsAre("main: grab 53+2048 id 1", "main: grab 53+2560 id 1"));
}

TEST_F(HotkeyCenterTest, RefusalWritesItsLineAndTheReasonOnASecondOne) {
  service.refuse(53, 2048, -9878);
  add(53, 2048);
  EXPECT_THAT(log.lines,
              ElementsAre("Tavin: hotkey keyCode=53 modifiers=2048 unavailable (-9878)"));
  service.reason = QStringLiteral("another program holds it");
  add(53, 2048);
  EXPECT_EQ(log.lines.back(), "Tavin: another program holds it");
}

TEST_F(HotkeyCenterTest, SuccessWithoutAReferenceIsARefusalOfStatusZero) {
  service.refuse(53, 2048, 0);
  EXPECT_FALSE(add(53, 2048));
  EXPECT_THAT(log.lines, ElementsAre("Tavin: hotkey keyCode=53 modifiers=2048 unavailable (0)"));
}

TEST_F(HotkeyCenterTest, PressRunsItsHandlerLaterFromTheMainQueue) {
  int speak = 0;
  int pause = 0;
  add(53, 2048, [&] { ++speak; });
  add(53, 2560, [&] { ++pause; });
  press(2);
  EXPECT_EQ(pause, 0);
  settle();
  EXPECT_EQ(speak, 0);
  EXPECT_EQ(pause, 1);
}

TEST_F(HotkeyCenterTest, PressWhoseRegistrationWasReleasedBeforeItsTaskRanRunsNothing) {
  int runs = 0;
  add(53, 2048, [&] { ++runs; });
  press(1);
  center.unregisterAll();
  settle();
  EXPECT_EQ(runs, 0);
}

TEST_F(HotkeyCenterTest, HandlerIsLookedUpWhenTheTaskRuns) {
  std::string ran;
  add(53, 2048, [&] { ran += "old"; });
  press(1);
  center.unregisterAll();
  add(15, 6144, [&] { ran += "new"; });
  settle();
  EXPECT_EQ(ran, "new");
}

TEST_F(HotkeyCenterTest, HandlerMayRegisterAnewWhileItRuns) {
  auto guard = std::make_shared<int>(0);
  add(53, 2048, [this, guard] {
    center.unregisterAll();
    add(15, 6144);
    ++*guard;  // What the handler holds is still there.
  });
  press(1);
  settle();
  EXPECT_EQ(*guard, 1);
}

TEST_F(HotkeyCenterTest, UnknownIdRunsNothing) {
  int runs = 0;
  add(53, 2048, [&] { ++runs; });
  press(0);
  press(7);
  settle();
  EXPECT_EQ(runs, 0);
}

TEST_F(HotkeyCenterTest, UnregisterAllReleasesInOrder) {
  add(53, 2048);
  add(53, 2560);
  journal.clear();
  center.unregisterAll();
  EXPECT_THAT(journal.lines(), ElementsAre("main: ungrab id 1", "main: ungrab id 2"));
}

TEST_F(HotkeyCenterTest, LateYesMakesTheCombinationActiveAndIsLogged) {
  int answers = 0;
  center.setAnswerHandler([&] { ++answers; });
  service.answerLater(53, 2048);
  EXPECT_FALSE(add(53, 2048));
  EXPECT_FALSE(center.allActive());
  service.answer(0, 0);
  EXPECT_TRUE(center.allActive());
  EXPECT_EQ(answers, 1);
  EXPECT_THAT(log.lines, ElementsAre("Tavin: hotkey keyCode=53 modifiers=2048 unavailable (-1)",
                                     "Tavin: hotkey keyCode=53 modifiers=2048 available"));
}

TEST_F(HotkeyCenterTest, LateNoIsLoggedWithItsReason) {
  int answers = 0;
  center.setAnswerHandler([&] { ++answers; });
  service.answerLater(53, 2048);
  add(53, 2048);
  log.lines.clear();
  service.reason = QStringLiteral("the desktop holds it");
  service.answer(0, 2);
  EXPECT_FALSE(center.allActive());
  EXPECT_EQ(answers, 1);
  EXPECT_THAT(log.lines, ElementsAre("Tavin: hotkey keyCode=53 modifiers=2048 unavailable (2)",
                                     "Tavin: the desktop holds it"));
}

TEST_F(HotkeyCenterTest, GrantTakenBackLaterIsARefusal) {
  service.answerLater(53, 2048);
  add(53, 2048);
  service.answer(0, 0);
  service.answer(0, -1);
  EXPECT_FALSE(center.allActive());
}

TEST_F(HotkeyCenterTest, PendingCombinationsHaveIdsOfTheirOwn) {
  std::string ran;
  service.answerLater(53, 2048);
  service.answerLater(53, 2560);
  add(53, 2048, [&] { ran += "speak"; });
  add(53, 2560, [&] { ran += "pause"; });
  EXPECT_THAT(journal.starting("main: grab"),
              ElementsAre("main: grab 53+2048 id 1", "main: grab 53+2560 id 2"));
  service.answer(1, 0);
  service.answer(0, 0);
  press(2);
  settle();
  EXPECT_EQ(ran, "pause");
}

TEST_F(HotkeyCenterTest, OneOfTwoAnsweredWithNoLeavesTheOtherWorking) {
  int pause = 0;
  service.answerLater(53, 2048);
  add(53, 2048);
  EXPECT_TRUE(add(53, 2560, [&] { ++pause; }));
  service.answer(0, -1);
  EXPECT_FALSE(center.allActive());
  press(2);
  settle();
  EXPECT_EQ(pause, 1);
}

TEST_F(HotkeyCenterTest, AnswerForAReleasedCombinationIsIgnored) {
  int answers = 0;
  center.setAnswerHandler([&] { ++answers; });
  service.answerLater(53, 2048);
  add(53, 2048);
  center.unregisterAll();
  EXPECT_EQ(journal.lines().back(), "main: ungrab id 1");
  add(15, 6144);
  log.lines.clear();
  service.answer(0, -1);
  EXPECT_TRUE(center.allActive());
  EXPECT_EQ(answers, 0);
  EXPECT_THAT(log.lines, ElementsAre());
}

using HotkeyCenterDeathTest = HotkeyCenterTest;

TEST_F(HotkeyCenterDeathTest, CodeOrMaskBeyondThirtyTwoBitsStopsTheProcess) {
  EXPECT_DEATH(add(-1, 0), "out of range");
  EXPECT_DEATH(add(53, -1), "out of range");
  EXPECT_DEATH(add(0x100000000, 0), "out of range");
}

}  // namespace
}  // namespace tavin::test
