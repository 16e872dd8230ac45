#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "platform/copy/GuardedPasteboardFixture.h"

namespace tavin::test {
namespace {

class PatientCaptureTest : public GuardedPasteboardTest {
 protected:
  PatientCaptureTest() : GuardedPasteboardTest(1s, kForEver) {}
};

TEST_F(PatientCaptureTest, ACopyThatWasInTimeIsNotLateForHowLongItsLookTakes) {
  captureInVain();
  const auto before = pasteboard_.changeCount();
  clipboard_.copy();
  clipboard_.whileTaken = [] { std::this_thread::sleep_for(1100ms); };
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
}

TEST_F(GuardedPasteboardTest, WhereNoCopyCanBeMadeTheContentsAreNotRead) {
  ready_ = false;
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
  EXPECT_EQ(clipboard_.readings, 0);
}

TEST_F(GuardedPasteboardTest, WhatTheUserCopiesIsNoChangeUnlessTheCommandIsTyped) {
  for (const bool typed : {false, true}) {
    pasteboard_.pasteboardItems();
    const auto before = pasteboard_.changeCount();
    clipboard_.copy();
    if (typed)
      typeCopy();
    EXPECT_EQ(pasteboard_.changeCount() != before, typed);
  }
}

TEST_F(GuardedPasteboardTest, AClosedKeyboardTypesNothingThatWasBegun) {
  const auto event = keyboard_.createKeyboardEvent(kC, true);
  ASSERT_TRUE(event);
  event->setFlags(EventFlags::command);
  keyboard_.close();
  event->post();
  EXPECT_EQ(keyboard_.commandsTyped(), 0);
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
}

TEST_F(GuardedPasteboardTest, EachReadingBeginsANewCount) {
  pasteboard_.pasteboardItems();
  const auto before = pasteboard_.changeCount();
  typeCopy();
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
  pasteboard_.pasteboardItems();
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.changeCount(), before + 1) << "the command was not typed again";
}

TEST_F(GuardedPasteboardTest, NoPermissionIsAskedForWhereTheProgramMustNotGetTheKeys) {
  ready_ = false;
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_EQ(key_.questions, 0);
  ready_ = true;
  key_.permitted = false;
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_EQ(key_.questions, 1);
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(GuardedPasteboardTest, AHeldModifierMakesNoEvent) {
  key_.held = EventFlags::option;
  EXPECT_EQ(keyboard_.flagsState(), EventFlags::option);
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, true));
  EXPECT_FALSE(keyboard_.createKeyboardEvent(kC, false)) << "an up without a down";
}

TEST_F(GuardedPasteboardTest, WhereNothingCanTypeThereIsNoEvent) {
  copy::CopyKeyboard none(nullptr, [] { return true; });
  EXPECT_FALSE(none.canType());
  EXPECT_FALSE(none.isReady());
  EXPECT_EQ(none.flagsState(), 0U);
  EXPECT_FALSE(none.createKeyboardEvent(kC, true));
}

TEST_F(GuardedPasteboardTest, WhatTheCaptureStillTakesItGivesBackItself) {
  captureInVain();
  clipboard_.copy();
  const auto taken = pasteboard_.changeCount();
  EXPECT_EQ(clipboard_.contents(), kCopied);
  EXPECT_EQ(pasteboard_.changeCount(), taken);
  pasteboard_.clearContents();
  pasteboard_.writeObjects(kUsers);
  EXPECT_FALSE(clipboard_.isWatched());
}

TEST_F(GuardedPasteboardTest, AfterACaptureThatTookOneOfTwoCopiesTheOtherIsUndone) {
  captureInVain();
  captureInVain();
  clipboard_.copyTogether({true, false});
  pasteboard_.changeCount();
  pasteboard_.clearContents();
  pasteboard_.writeObjects(kUsers);
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
}

TEST_F(GuardedPasteboardTest, WhatAnotherProgramPutsThereInTimeIsNoAnswer) {
  captureInVain();
  clipboard_.copy(false);
  pasteboard_.changeCount();
  pasteboard_.writeObjects(kUsers);
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(GuardedPasteboardTest, ACopyThatLandsWhileTheNextCaptureReadsIsNotWhatTheUserHad) {
  captureInVain();
  clipboard_.whileRead = [this] { clipboard_.copy(); };
  EXPECT_EQ(pasteboard_.pasteboardItems(), kUsers);
  EXPECT_EQ(clipboard_.contents(), kUsers);
}

TEST_F(GuardedPasteboardTest, ALateCopyIsNoAnswerToTheNextCommand) {
  captureInVain();
  pasteboard_.pasteboardItems();
  const auto before = pasteboard_.changeCount();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  typeCopy();
  EXPECT_EQ(pasteboard_.changeCount(), before);
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.changeCount(), before + 1);
}

TEST_F(GuardedPasteboardTest, WhatTheUserCopiesBeforeTheNextCommandEndsNoLaterWait) {
  captureInVain();
  pasteboard_.pasteboardItems();
  pasteboard_.changeCount();
  clipboard_.act(copy::UserInput::Clock::now() - copy::shortcutsWay);
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  clipboard_.set(kUsers);
  captureInVain();
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
}

// The guard may have its next turn only when the command is typed.
TEST_F(GuardedPasteboardTest, ACaptureThatBeganWhileASlowProgramWasAskedGetsItsOwnCopy) {
  for (int round = 0; round < 50; ++round) {
    captureInVain();
    pasteboard_.captureBegins();
    std::promise<void> asked, answer;
    clipboard_.whileRead = [&] {
      asked.set_value();
      answer.get_future().wait();
    };
    clipboard_.copy(false);
    asked.get_future().wait();
    pasteboard_.captureBegins();
    answer.set_value();
    captureInVain();
    const int before = clipboard_.arrivals;
    pasteboard_.shortcutArrived();
    ASSERT_TRUE(eventually([&] { return clipboard_.arrivals > before; }));
    const auto count = pasteboard_.changeCount();
    clipboard_.copy();
    ASSERT_EQ(pasteboard_.changeCount(), count + 1);
    pasteboard_.writeObjects(kUsers);
  }
}

TEST_F(GuardedPasteboardTest, TheEndWaitsForTheAnswerAndUndoesIt) {
  captureInVain();
  std::thread program([this] {
    std::this_thread::sleep_for(100ms);
    clipboard_.copy();
  });
  pasteboard_.finish(Deadline::in(10));
  EXPECT_EQ(clipboard_.contents(), kUsers);
  program.join();
}

TEST_F(GuardedPasteboardTest, TheEndWaitsNoLongerThanItMay) {
  captureInVain();
  const auto begin = std::chrono::steady_clock::now();
  pasteboard_.finish(Deadline::in(0.1));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  EXPECT_EQ(clipboard_.contents(), kUsers);
}

TEST_F(GuardedPasteboardTest, WithoutACommandTheEndWaitsForNothing) {
  const auto begin = std::chrono::steady_clock::now();
  pasteboard_.finish(Deadline::in(10));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  EXPECT_EQ(pasteboard_.pasteboardItems(), std::nullopt);
}

TEST_F(GuardedPasteboardTest, WhatACaptureHasTakenTheEndGivesBack) {
  captureInVain();
  clipboard_.copy();
  pasteboard_.changeCount();
  pasteboard_.finish(Deadline::in(10));
  EXPECT_EQ(clipboard_.contents(), kUsers);
  pasteboard_.clearContents();
  EXPECT_EQ(clipboard_.contents(), kUsers) << "the capture went on";
}

}  // namespace
}  // namespace tavin::test
