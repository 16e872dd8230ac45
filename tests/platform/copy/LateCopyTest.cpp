#include <gtest/gtest.h>

#include <QScopeGuard>
#include <atomic>
#include <future>
#include <thread>
#include <utility>

#include "platform/copy/GuardedPasteboardFixture.h"

namespace tavin::test {
namespace {

// The capture is over as soon as the command is typed.
class LateCopyTest : public GuardedPasteboardTest {
 protected:
  LateCopyTest() : GuardedPasteboardTest(0ms, kForEver) {}
};

// The contents are not kept at all.
class ForgottenCopyTest : public GuardedPasteboardTest {
 protected:
  ForgottenCopyTest() : GuardedPasteboardTest(0ms, 0ms) {}
};

TEST_F(LateCopyTest, ItIsUndone) {
  captureInVain();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
}

TEST_F(LateCopyTest, AnEmptyClipboardIsEmptyAgain) {
  clipboard_.set({});
  captureInVain();
  clipboard_.copy();
  EXPECT_TRUE(becomes({}));
}

TEST_F(LateCopyTest, ACaptureThatLooksAgainSeesNoChange) {
  captureInVain();
  const auto before = pasteboard_.changeCount();
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.changeCount(), before);
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_EQ(pasteboard_.changeCount(), before);
}

TEST_F(LateCopyTest, OneThatLandedBeforeItCouldBeWatchedForIsUndone) {
  pasteboard_.pasteboardItems();
  const auto before = pasteboard_.changeCount();
  typeCopy();
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.changeCount(), before);
  EXPECT_EQ(clipboard_.contents(), kUsers);
  EXPECT_FALSE(clipboard_.isWatched());
}

TEST_F(LateCopyTest, WhatAnotherProgramPutsThereStays) {
  captureInVain();
  clipboard_.copy(false);
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

TEST_F(LateCopyTest, WhatTheUserPutsThereStays) {
  captureInVain();
  clipboard_.act(copy::UserInput::Clock::now() - copy::shortcutsWay);
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

TEST_F(LateCopyTest, AKeyThatTurnsOutToBeNoShortcutsIsTheUsers) {
  captureInVain();
  clipboard_.act();
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

TEST_F(LateCopyTest, AKeyThatTurnsOutToBeAShortcutsIsNot) {
  captureInVain();
  const auto press = copy::UserInput::Clock::now() + kForEver;
  clipboard_.act(press);
  clipboard_.copy();
  pasteboard_.shortcutArrived(press);
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(LateCopyTest, NothingIsDecidedWhileAShortcutMayBeOnItsWay) {
  captureInVain();
  clipboard_.act(copy::UserInput::Clock::now() + kForEver);
  clipboard_.copy();
  EXPECT_FALSE(eventually([this] { return clipboard_.contents() == kUsers; }, 50));
  EXPECT_TRUE(clipboard_.isWatched());
}

TEST_F(LateCopyTest, ACaptureThatBeginsWithoutAShortcutDecides) {
  captureInVain();
  clipboard_.act(copy::UserInput::Clock::now() + kForEver);
  clipboard_.copy();
  pasteboard_.captureBegins();
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

// Who put something there is asked for it, as it may be a clipboard manager with what was saved.
TEST_F(LateCopyTest, ACaptureThatBeginsWhileASlowProgramIsAskedForTheClipboardDecides) {
  captureInVain();
  std::promise<void> asked, answer;
  clipboard_.whileRead = [&] {
    asked.set_value();
    answer.get_future().wait();
  };
  clipboard_.copy(false, kUsers);
  asked.get_future().wait();
  clipboard_.act(copy::UserInput::Clock::now() + kForEver);
  clipboard_.copy(true, kUsers);
  // Would never come back.
  auto begun = std::async([this] { pasteboard_.captureBegins(); });
  EXPECT_EQ(begun.wait_for(5s), std::future_status::ready);
  answer.set_value();
  EXPECT_TRUE(isOver());
}

TEST_F(LateCopyTest, ACaptureWaitsForOneAnswerOfAProgramThatChangesTheClipboardAgainAndAgain) {
  captureInVain();
  std::atomic<int> answers = 0;
  std::atomic<bool> ends = false, ended = false;
  std::function<void()> answer = [&] {
    std::this_thread::sleep_for(20ms);
    ++answers;
    if ((ended = ends.load()))
      return;
    clipboard_.whileRead = answer;
    clipboard_.copy(false, kUsers);
  };
  clipboard_.whileRead = answer;
  clipboard_.copy(false, kUsers);
  const auto end = qScopeGuard([&] {
    ends = true;
    EXPECT_TRUE(eventually([&] { return ended.load(); }));
  });
  for (int round = 0; round < 10; ++round) {
    const int before = answers;
    ASSERT_TRUE(eventually([&] { return answers > before; }));
    const int waited = answers;
    pasteboard_.clearContents();
    EXPECT_LE(answers - waited, 2);  // One ended before the wait began.
  }
}

TEST_F(LateCopyTest, TheShortcutOfTheNextCaptureShowsNoCopyOfTheUsersOwn) {
  captureInVain();
  const auto press = copy::UserInput::Clock::now() + kForEver;
  clipboard_.act(press);
  pasteboard_.shortcutArrived(press);
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(LateCopyTest, WhatTheUserDidBeforeTheShortcutStillCounts) {
  captureInVain();
  clipboard_.act(copy::UserInput::Clock::now() - 2 * copy::shortcutsWay);
  pasteboard_.shortcutArrived();
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

TEST_F(ForgottenCopyTest, StaysInTheClipboard) {
  captureInVain();
  EXPECT_TRUE(isOver());
  clipboard_.copy();
  EXPECT_EQ(pasteboard_.pasteboardItems(), kCopied);
}

TEST_F(LateCopyTest, AsManyAreUndoneAsCommandsWereTyped) {
  captureInVain();
  captureInVain();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(clipboard_.isWatched());
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
}

TEST_F(LateCopyTest, OneThatLandsWhileAnotherIsUndoneIsUndoneToo) {
  captureInVain();
  captureInVain();
  clipboard_.whileWritten = [this] { clipboard_.copy(); };
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  EXPECT_EQ(clipboard_.contents(), kUsers);
}

TEST_F(LateCopyTest, AClipboardManagerThatTakesItOverIsNoAnswer) {
  captureInVain();
  captureInVain();
  clipboard_.copyTogether({true, false});
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(clipboard_.isWatched()) << "the second answer is to come";
  clipboard_.copy(false, kUsers);
  EXPECT_TRUE(eventually([this] { return clipboard_.isTaken(); }));
  clipboard_.copy(true, kUsers);
  EXPECT_TRUE(eventually([this] { return clipboard_.isTaken(); }));
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
}

}  // namespace
}  // namespace tavin::test
