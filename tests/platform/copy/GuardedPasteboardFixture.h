#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/Eventually.h"
#include "platform/copy/GuardedPasteboard.h"

namespace tavin::test {

using namespace std::chrono_literals;

constexpr std::uint16_t kC = 8;
// Long enough for any test.
constexpr auto kForEver = 1h;

inline const std::vector<PasteboardItem> kUsers{PasteboardItem{{{"text/plain", "the user's"}}}};
inline const std::vector<PasteboardItem> kCopied{PasteboardItem{{{"text/plain", "copied"}}}};

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
  void act(copy::UserInput::Time time = copy::UserInput::Clock::now()) {
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
  void explain(copy::UserInput::Time arrival) {
    const std::lock_guard lock(mutex_);
    ++arrivals;
    input_.explainBy(arrival, arrival);
    for (auto& change : seen_) change.input.explainBy(arrival, arrival);
  }

  // Whether nobody has yet to look at what was copied.
  bool isTaken() {
    const std::lock_guard lock(mutex_);
    return seen_.empty();
  }

  int readings = 0;
  std::atomic<int> arrivals = 0;  // Of shortcuts, that it was told.
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
  copy::UserInput input_;
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
  void shortcutArrived(copy::UserInput::Time time) override { clipboard_.explain(time); }

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

}  // namespace tavin::test
