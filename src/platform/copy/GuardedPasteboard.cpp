#include "platform/copy/GuardedPasteboard.h"

#include <algorithm>
#include <utility>

namespace tavin::copy {

GuardedPasteboard::GuardedPasteboard(std::unique_ptr<WatchedPasteboard> pasteboard,
                                     CopyKeyboard& keyboard)
    : GuardedPasteboard(std::move(pasteboard), keyboard, Patience{}) {}

GuardedPasteboard::GuardedPasteboard(std::unique_ptr<WatchedPasteboard> pasteboard,
                                     CopyKeyboard& keyboard, Patience patience)
    : pasteboard_(std::move(pasteboard)), keyboard_(keyboard), patience_(patience) {
  thread_ = std::thread([this] { run(); });
}

GuardedPasteboard::~GuardedPasteboard() {
  ending_ = true;
  wake_.call();
  thread_.join();
  pasteboard_->endWatch();
}

std::optional<std::vector<PasteboardItem>> GuardedPasteboard::pasteboardItems() {
  if (!keyboard_.isReady())
    return std::nullopt;
  const std::lock_guard lock(mutex_);
  if (closed_)
    return std::nullopt;
  endCapture();
  const Contents before = saved_;
  auto items = pasteboard_->pasteboardItems();
  // What was read may be a copy that landed meanwhile.
  if (settle())
    items = before;
  contents_ = items;
  typedBefore_ = keyboard_.commandsTyped();
  told_.reset();
  tellWhetherBusy();
  return items;
}

std::int64_t GuardedPasteboard::changeCount() {
  const std::lock_guard lock(mutex_);
  if (!told_) {
    base_ = pasteboard_->changeCount();
    told_ = base_;
    return *told_;
  }
  const bool typed = keyboard_.commandsTyped() != typedBefore_;
  if (contents_ && typed)
    commandTyped();
  contents_.reset();
  tellWhetherBusy();
  if (!typed || stage_ == Stage::settled)
    return *told_;
  const std::int64_t changes = pasteboard_->changeCount() - base_;
  if (changes == 0 || stage_ == Stage::taken)
    return *told_ + changes;
  // A display that was started again counts from the beginning.
  answered(std::max<std::int64_t>(changes, 1));
  if (closed_) {
    giveBack();
    return *told_;
  }
  stage_ = Stage::taken;
  return *told_ + changes;
}

void GuardedPasteboard::clearContents() {
  const std::lock_guard lock(mutex_);
  if (closed_)
    return;
  pasteboard_->clearContents();
  if (stage_ == Stage::taken && saved_.empty())
    goOn();
}

void GuardedPasteboard::writeObjects(const std::vector<PasteboardItem>& items) {
  const std::lock_guard lock(mutex_);
  if (closed_)
    return;
  pasteboard_->writeObjects(items);
  if (stage_ == Stage::taken)
    goOn();
}

void GuardedPasteboard::captureBegins() {
  const std::lock_guard lock(mutex_);
  endCapture();
  if (stage_ == Stage::awaited)
    watch();
}

// Takes no lock: a capture may hold it while it waits for a program.
void GuardedPasteboard::finish(Deadline deadline) {
  closed_ = true;
  wake_.call();
  while (busy_ && !deadline.passed())
    settled_.waitUntil(Clock::now() + std::chrono::milliseconds(deadline.remainingMs()));
}

void GuardedPasteboard::run() {
  auto next = Clock::time_point::max();
  while (!ending_) {
    wake_.waitUntil(next);
    const std::lock_guard lock(mutex_);
    settle();
    next = nextLook();
  }
}

GuardedPasteboard::Clock::time_point GuardedPasteboard::nextLook() const {
  if (stage_ != Stage::awaited)
    return Clock::time_point::max();
  return !closed_ && Clock::now() < captureOver_ ? captureOver_ : keptUntil_;
}

void GuardedPasteboard::endCapture() {
  captureOver_ = Clock::now();
  settle();
}

// Decides what the changes are that came after the end of the capture. Whether the contents were
// given back.
bool GuardedPasteboard::settle() {
  if (stage_ == Stage::taken && closed_) {
    giveBack();
    return true;
  }
  const auto now = Clock::now();
  if (stage_ != Stage::awaited || (!closed_ && now < captureOver_))
    return false;
  const ClipboardChanges changes = pasteboard_->watched();
  if (changes.count > 0)
    return undo(changes);
  if (now >= keptUntil_)
    forget();
  return false;
}

// What the user or another program has put there is what the user wants from now on.
bool GuardedPasteboard::undo(const ClipboardChanges& changes) {
  if (!changes.fromTarget || changes.userActed) {
    forget();
    return false;
  }
  answered(changes.count);
  giveBack();
  return true;
}

void GuardedPasteboard::commandTyped() {
  saved_ = std::move(*contents_);
  stage_ = Stage::awaited;
  ++unanswered_;
  const auto now = Clock::now();
  captureOver_ = now + patience_.capture;
  keptUntil_ = now + patience_.kept;
  watch();
}

void GuardedPasteboard::answered(std::int64_t times) {
  unanswered_ = static_cast<int>(std::max<std::int64_t>(unanswered_ - times, 0));
}

void GuardedPasteboard::giveBack() {
  if (saved_.empty())
    pasteboard_->clearContents();
  else
    pasteboard_->writeObjects(saved_);
  goOn();
  // The capture that is under way is told nothing of it.
  base_ = pasteboard_->changeCount();
}

// The contents are back. Several presses may have reached a program that was busy: as many copies
// are to come.
void GuardedPasteboard::goOn() {
  if (unanswered_ == 0)
    return forget();
  stage_ = Stage::awaited;
  captureOver_ = Clock::now();
  watch();
}

void GuardedPasteboard::forget() {
  stage_ = Stage::settled;
  unanswered_ = 0;
  saved_.clear();
  pasteboard_->endWatch();
  tellWhetherBusy();
}

void GuardedPasteboard::watch() {
  pasteboard_->beginWatch([this] { wake_.call(); });
  wake_.call();
}

void GuardedPasteboard::tellWhetherBusy() {
  busy_ = contents_ || stage_ != Stage::settled;
  if (!busy_)
    settled_.call();
}

}  // namespace tavin::copy
