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
constexpr copy::GuardedPasteboard::Patience kPatience{.capture = 50ms, .kept = 2s};

const std::vector<PasteboardItem> kUsers{PasteboardItem{{{"text/plain", "the user's"}}}};
const std::vector<PasteboardItem> kCopied{PasteboardItem{{{"text/plain", "copied"}}}};

// A clipboard that the tests change as other programs do. Any thread.
class RecordingClipboard {
 public:
  using Contents = std::vector<PasteboardItem>;

  void copy(bool fromTarget = true, bool userActed = false, Contents contents = kCopied) {
    const std::lock_guard lock(mutex_);
    changeTo(std::move(contents));
    if (!onChange_)
      return;
    if (++seen_.count == 1)
      seen_.fromTarget = fromTarget;
    seen_.userActed = acted_ || userActed;
    onChange_();
  }
  // Seen by a watch that has begun.
  void act() {
    const std::lock_guard lock(mutex_);
    acted_ = true;
  }
  Contents read() {
    ++readings;
    if (whileRead)
      std::exchange(whileRead, nullptr)();
    return contents();
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
    seen_ = {};
    acted_ = false;
  }
  bool isWatched() {
    const std::lock_guard lock(mutex_);
    return onChange_ != nullptr;
  }
  copy::ClipboardChanges seen() {
    const std::lock_guard lock(mutex_);
    return seen_;
  }

  int readings = 0;
  std::function<void()> whileRead;

 private:
  void changeTo(Contents contents) {
    contents_ = std::move(contents);
    ++changes_;
  }

  std::mutex mutex_;
  Contents contents_ = kUsers;
  std::int64_t changes_ = 7;
  std::function<void()> onChange_;
  copy::ClipboardChanges seen_;
  bool acted_ = false;
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
  void writeObjects(const std::vector<PasteboardItem>& items) override { clipboard_.set(items); }
  void beginWatch(std::function<void()> onChange) override {
    clipboard_.watch(std::move(onChange));
  }
  void endWatch() override { clipboard_.watch(nullptr); }
  copy::ClipboardChanges watched() override { return clipboard_.seen(); }

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

class GuardedPasteboardTest : public testing::Test {
 protected:
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
  void passCapture() { std::this_thread::sleep_for(2 * kPatience.capture); }
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
  copy::GuardedPasteboard pasteboard_{std::make_unique<FakePasteboard>(clipboard_), keyboard_,
                                      kPatience};
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

TEST_F(GuardedPasteboardTest, ACopyThatLandsAfterTheCaptureIsUndone) {
  captureInVain();
  passCapture();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
  clipboard_.copy();
  EXPECT_FALSE(eventually([&] { return clipboard_.contents() == kUsers; }, 200));
}

TEST_F(GuardedPasteboardTest, AnEmptyClipboardIsEmptyAgain) {
  clipboard_.set({});
  captureInVain();
  passCapture();
  clipboard_.copy();
  EXPECT_TRUE(becomes({}));
}

TEST_F(GuardedPasteboardTest, WhatTheCaptureStillTakesItGivesBackItself) {
  captureInVain();
  clipboard_.copy();
  const auto taken = pasteboard_.changeCount();
  passCapture();
  EXPECT_EQ(clipboard_.contents(), kCopied);
  EXPECT_EQ(pasteboard_.changeCount(), taken);
  pasteboard_.clearContents();
  pasteboard_.writeObjects(kUsers);
  EXPECT_FALSE(clipboard_.isWatched());
}

TEST_F(GuardedPasteboardTest, ACaptureThatLooksAgainAfterTheContentsAreBackSeesNoChange) {
  captureInVain();
  const auto before = pasteboard_.changeCount();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_EQ(pasteboard_.changeCount(), before);
}

TEST_F(GuardedPasteboardTest, WhatAnotherProgramOrTheUserPutsThereStays) {
  for (const auto& [fromTarget, userActed] : {std::pair(false, false), std::pair(true, true)}) {
    clipboard_.set(kUsers);
    captureInVain();
    passCapture();
    clipboard_.copy(fromTarget, userActed);
    EXPECT_TRUE(isOver());
    EXPECT_EQ(clipboard_.contents(), kCopied);
  }
}

TEST_F(GuardedPasteboardTest, ThePressOfTheNextCaptureShowsNoCopyOfTheUsersOwn) {
  captureInVain();
  passCapture();
  clipboard_.act();
  pasteboard_.captureBegins();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
}

TEST_F(GuardedPasteboardTest, TheContentsAreNotKeptForEver) {
  captureInVain();
  EXPECT_TRUE(isOver());
  clipboard_.copy();
  EXPECT_FALSE(eventually([&] { return clipboard_.contents() == kUsers; }, 200));
}

TEST_F(GuardedPasteboardTest, AsManyCopiesAreUndoneAsCommandsWereTyped) {
  captureInVain();
  captureInVain();
  passCapture();
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(clipboard_.isWatched());
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
}

TEST_F(GuardedPasteboardTest, AfterACaptureThatTookOneOfTwoCopiesTheOtherIsUndone) {
  captureInVain();
  captureInVain();
  clipboard_.copy();
  pasteboard_.changeCount();
  pasteboard_.clearContents();
  pasteboard_.writeObjects(kUsers);
  clipboard_.copy();
  EXPECT_TRUE(becomes(kUsers));
  EXPECT_TRUE(isOver());
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
  clipboard_.copy(true, true);
  EXPECT_TRUE(isOver());
  clipboard_.set(kUsers);
  captureInVain();
  passCapture();
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
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
  EXPECT_EQ(clipboard_.contents(), kUsers);
}

TEST_F(GuardedPasteboardTest, WithoutACommandTheEndWaitsForNothing) {
  const auto begin = std::chrono::steady_clock::now();
  pasteboard_.finish(Deadline::in(10));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
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
