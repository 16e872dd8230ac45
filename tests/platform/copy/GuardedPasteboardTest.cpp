#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/Eventually.h"
#include "platform/copy/GuardedPasteboard.h"

namespace tavin::test {
namespace {

using namespace std::chrono_literals;

constexpr std::uint16_t kC = 8;
// Long enough for any test.
constexpr auto kForEver = 1h;

const std::vector<PasteboardItem> kUsers{PasteboardItem{{{"text/plain", "the user's"}}}};
const std::vector<PasteboardItem> kCopied{PasteboardItem{{{"text/plain", "copied"}}}};

// A clipboard that the tests change as other programs do. Any thread.
class RecordingClipboard {
 public:
  using Contents = std::vector<PasteboardItem>;

  void copy(bool fromTarget = true, Contents contents = kCopied) {
    copyTogether({fromTarget}, std::move(contents));
  }
  // So soon after each other that they are all seen at once.
  void copyTogether(const std::vector<bool>& fromTarget, Contents contents = kCopied) {
    const std::lock_guard lock(mutex_);
    for (const bool targets : fromTarget) {
      changeTo(contents);
      seen_.push_back({.fromTarget = targets, .input = input_});
    }
    if (onChange_)
      onChange_();
  }
  // The user does something, as a watch that has begun sees it.
  void act(copy::Input::Time time = copy::Input::Clock::now()) {
    const std::lock_guard lock(mutex_);
    input_.note(time);
  }
  Contents read() {
    ++readings;
    if (whileRead)
      std::exchange(whileRead, nullptr)();
    return contents();
  }
  void write(Contents contents) {
    set(std::move(contents));
    if (whileWritten)
      std::exchange(whileWritten, nullptr)();
  }
  Contents contents() {
    const std::lock_guard lock(mutex_);
    return contents_;
  }
  std::int64_t changes() {
    const std::lock_guard lock(mutex_);
    return changes_;
  }
  void set(Contents contents) {
    const std::lock_guard lock(mutex_);
    changeTo(std::move(contents));
  }
  void watch(std::function<void()> onChange) {
    const std::lock_guard lock(mutex_);
    onChange_ = std::move(onChange);
    seen_.clear();
    input_ = {};
  }
  bool isWatched() {
    const std::lock_guard lock(mutex_);
    return onChange_ != nullptr;
  }
  std::vector<copy::ClipboardChange> take() {
    if (whileTaken)
      std::exchange(whileTaken, nullptr)();
    const std::lock_guard lock(mutex_);
    return std::exchange(seen_, {});
  }
  void explain(copy::Input::Time arrival) {
    const std::lock_guard lock(mutex_);
    input_.explainBy(arrival, arrival);
    for (auto& change : seen_) change.input.explainBy(arrival, arrival);
  }

  // Whether nobody has yet to look at what was copied.
  bool isTaken() {
    const std::lock_guard lock(mutex_);
    return seen_.empty();
  }

  int readings = 0;
  std::function<void()> whileRead, whileWritten, whileTaken;

 private:
  void changeTo(Contents contents) {
    contents_ = std::move(contents);
    ++changes_;
  }

  std::mutex mutex_;
  Contents contents_ = kUsers;
  std::int64_t changes_ = 7;
  std::function<void()> onChange_;
  std::vector<copy::ClipboardChange> seen_;
  copy::Input input_;
};

class FakePasteboard final : public copy::WatchedPasteboard {
 public:
  explicit FakePasteboard(RecordingClipboard& clipboard) : clipboard_(clipboard) {}
  std::optional<std::vector<PasteboardItem>> pasteboardItems() override {
    return clipboard_.read();
  }
  std::int64_t changeCount() override { return clipboard_.changes(); }
  std::optional<QString> string() override { return std::nullopt; }
  void clearContents() override { clipboard_.set({}); }
  void writeObjects(const std::vector<PasteboardItem>& items) override { clipboard_.write(items); }
  void beginWatch(std::function<void()> onChange) override {
    clipboard_.watch(std::move(onChange));
  }
  void endWatch() override { clipboard_.watch(nullptr); }
  std::vector<copy::ClipboardChange> takeChanges() override { return clipboard_.take(); }
  void shortcutArrived(copy::Input::Time time) override { clipboard_.explain(time); }

 private:
  RecordingClipboard& clipboard_;
};

// Counts what it is asked.
struct Key {
  bool permitted = true;
  std::uint64_t held = 0;
  int questions = 0;
  int typed = 0;
};

class CountingKey final : public copy::CopyKey {
 public:
  explicit CountingKey(Key& key) : key_(key) {}
  std::uint64_t heldModifiers() override { return key_.held; }
  bool isPermitted() override {
    ++key_.questions;
    return key_.permitted;
  }
  void type() override { ++key_.typed; }

 private:
  Key& key_;
};

// While the capture is under way, whose end only the test tells.
class GuardedPasteboardTest : public testing::Test {
 protected:
  GuardedPasteboardTest() : GuardedPasteboardTest(kForEver, kForEver) {}
  GuardedPasteboardTest(std::chrono::milliseconds capture, std::chrono::milliseconds kept)
      : pasteboard_(std::make_unique<FakePasteboard>(clipboard_), keyboard_,
                    {.capture = capture, .kept = kept}) {}

  void typeCopy() {
    const auto event = keyboard_.createKeyboardEvent(kC, true);
    ASSERT_TRUE(event);
    event->setFlags(EventFlags::command);
    event->post();
  }

  // Up to the end of the capture's wait for the copy.
  void captureInVain() {
    ASSERT_EQ(pasteboard_.pasteboardItems(), clipboard_.contents());
    const auto before = pasteboard_.changeCount();
    typeCopy();
    ASSERT_EQ(pasteboard_.changeCount(), before);
  }
  bool becomes(const std::vector<PasteboardItem>& contents) {
    return eventually([&] { return clipboard_.contents() == contents; });
  }
  bool isOver() {
    return eventually([&] { return !clipboard_.isWatched(); });
  }

  bool ready_ = true;
  RecordingClipboard clipboard_;
  Key key_;
  copy::CopyKeyboard keyboard_{std::make_unique<CountingKey>(key_), [this] { return ready_; }};
  copy::GuardedPasteboard pasteboard_;
};

// The capture is over as soon as the command is typed.
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

class LateCopyTest : public GuardedPasteboardTest {
 protected:
  LateCopyTest() : GuardedPasteboardTest(0ms, kForEver) {}
};

// The contents are not kept at all.
class ForgottenCopyTest : public GuardedPasteboardTest {
 protected:
  ForgottenCopyTest() : GuardedPasteboardTest(0ms, 0ms) {}
};

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
  clipboard_.act(copy::Input::Clock::now() - copy::arrivalWait);
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
  const auto press = copy::Input::Clock::now() + kForEver;
  clipboard_.act(press);
  clipboard_.copy();
  pasteboard_.shortcutArrived(press);
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(LateCopyTest, NothingIsDecidedWhileAShortcutMayBeOnItsWay) {
  captureInVain();
  clipboard_.act(copy::Input::Clock::now() + kForEver);
  clipboard_.copy();
  EXPECT_FALSE(eventually([this] { return clipboard_.contents() == kUsers; }, 50));
  EXPECT_TRUE(clipboard_.isWatched());
}

TEST_F(LateCopyTest, ACaptureThatBeginsWithoutAShortcutDecides) {
  captureInVain();
  clipboard_.act(copy::Input::Clock::now() + kForEver);
  clipboard_.copy();
  pasteboard_.captureBegins();
  EXPECT_FALSE(clipboard_.isWatched());
  EXPECT_EQ(clipboard_.contents(), kCopied);
}

TEST_F(LateCopyTest, TheShortcutOfTheNextCaptureShowsNoCopyOfTheUsersOwn) {
  captureInVain();
  const auto press = copy::Input::Clock::now() + kForEver;
  clipboard_.act(press);
  pasteboard_.shortcutArrived(press);
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(LateCopyTest, WhatTheUserDidBeforeTheShortcutStillCounts) {
  captureInVain();
  clipboard_.act(copy::Input::Clock::now() - 2 * copy::shortcutsWay);
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
  clipboard_.act(copy::Input::Clock::now() - copy::arrivalWait);
  clipboard_.copy();
  EXPECT_TRUE(isOver());
  clipboard_.set(kUsers);
  captureInVain();
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
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
