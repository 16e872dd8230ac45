#include "platform/copy/GuardedPasteboard.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tavin::copy {
namespace {

using Item = PasteboardItem;

// Whether one offers what the other does, as far as both have it: a clipboard manager does not keep
// every type, and adds its own.
bool holdsTheSame(const Item& one, const Item& other) {
  bool shared = false;
  for (const auto& [name, bytes] : one.types) {
    const auto found = std::ranges::find(other.types, name, &std::pair<QString, QByteArray>::first);
    if (found == other.types.end())
      continue;
    if (found->second != bytes)
      return false;
    shared = true;
  }
  return shared;
}

bool holdsTheSame(const std::vector<Item>& some, const std::vector<Item>& others) {
  return some.size() == others.size() &&
         std::ranges::equal(some, others, [](const Item& one, const Item& other) {
           return holdsTheSame(one, other);
         });
}

}  // namespace

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
  const auto lock = takeTurn();
  if (closed_)
    return std::nullopt;
  endCapture();
  const Contents before = saved_;
  auto items = pasteboard_->pasteboardItems();
  // What was read may be a copy that landed meanwhile.
  if (settle(false))
    items = before;
  contents_ = items;
  typedBefore_ = keyboard_.commandsTyped();
  told_.reset();
  tellWhetherBusy();
  return items;
}

std::int64_t GuardedPasteboard::changeCount() {
  const auto asked = Clock::now();  // A program may keep what follows waiting.
  const auto lock = takeTurn();
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
  if (!typed || stage_ == Stage::idle)
    return *told_;
  const std::int64_t changes = pasteboard_->changeCount() - base_;
  if (changes == 0 || stage_ == Stage::taken)
    return *told_ + changes;
  return takeAnswer(changes, asked >= captureOver_) ? *told_ + changes : *told_;
}

// Whether the capture may have it.
bool GuardedPasteboard::takeAnswer(std::int64_t changes, bool late) {
  std::ranges::move(pasteboard_->takeChanges(), std::back_inserter(unjudged_));
  if (late && !unjudged_.empty()) {
    wake_.call();
    return false;
  }
  // It may have come before the watch began. A display that was started again counts from 0.
  const auto unseen = changes - std::ssize(unjudged_);
  answered(changesByTarget() + (unseen < 0 ? 1 : unseen));
  unjudged_.clear();
  if (late || closed_) {
    giveBack();
    return false;
  }
  stage_ = Stage::taken;
  return true;
}

void GuardedPasteboard::clearContents() {
  const auto lock = takeTurn();
  if (closed_)
    return;
  pasteboard_->clearContents();
  if (stage_ == Stage::taken && saved_.empty())
    awaitFurtherAnswers();
}

void GuardedPasteboard::writeObjects(const std::vector<PasteboardItem>& items) {
  const auto lock = takeTurn();
  if (closed_)
    return;
  pasteboard_->writeObjects(items);
  if (stage_ == Stage::taken)
    awaitFurtherAnswers();
}

void GuardedPasteboard::shortcutArrived(UserInput::Time time) {
  if (!busy_)
    return;
  {
    const std::lock_guard lock(arrivalsMutex_);
    arrivals_.push_back(time);
  }
  wake_.call();
}

// Takes no lock: most captures leave the clipboard alone, and need not wait while a slow program is
// asked for it.
void GuardedPasteboard::captureBegins() {
  captureBegun_ = true;
  wake_.call();
}

// Takes no lock: a capture may hold it while it waits for a program.
void GuardedPasteboard::finish(Deadline deadline) {
  closed_ = true;
  wake_.call();
  while (busy_ && !deadline.passed())
    becameFree_.waitUntil(Clock::now() + std::chrono::milliseconds(deadline.remainingMs()));
}

// Who waits has its turn next: a program that changes the clipboard again and again, and is slow
// each time it is asked for it, keeps a capture waiting for one answer only.
std::unique_lock<std::mutex> GuardedPasteboard::takeTurn() {
  const std::lock_guard door(door_);
  return std::unique_lock(mutex_);
}

void GuardedPasteboard::run() {
  auto next = Clock::time_point::max();
  while (!ending_) {
    wake_.waitUntil(next);
    const auto lock = takeTurn();
    if (captureBegun_)
      endCapture();
    settle(true);
    next = nextLook();
  }
}

GuardedPasteboard::Clock::time_point GuardedPasteboard::nextLook() const {
  if (stage_ != Stage::awaited)
    return Clock::time_point::max();
  if (!closed_ && Clock::now() < captureOver_)
    return captureOver_;
  const auto input = unjudged_.empty() ? std::nullopt : unjudged_.back().input.first();
  return input ? std::min(*input + shortcutsWay, keptUntil_) : keptUntil_;
}

void GuardedPasteboard::endCapture() {
  captureBegun_ = false;
  captureOver_ = Clock::now();
  settle(false);
}

// Decides what the changes are that came after the end of the capture, or waits where it may and
// must. Whether the contents were given back.
bool GuardedPasteboard::settle(bool mayWait) {
  const auto now = Clock::now();
  takeNews();
  if (stage_ == Stage::taken && closed_) {
    giveBack();
    return true;
  }
  if (stage_ != Stage::awaited || (!closed_ && now < captureOver_))
    return false;
  std::ranges::move(pasteboard_->takeChanges(), std::back_inserter(unjudged_));
  const bool undone = !unjudged_.empty() && judge(now, mayWait && !closed_);
  if (stage_ == Stage::awaited && now >= keptUntil_)
    forget();
  return undone;
}

// Of the user's shortcuts.
void GuardedPasteboard::takeNews() {
  std::vector<Clock::time_point> arrivals;
  {
    const std::lock_guard lock(arrivalsMutex_);
    arrivals.swap(arrivals_);
  }
  if (stage_ == Stage::idle)
    return;
  for (const auto time : arrivals) {
    pasteboard_->shortcutArrived(time);
    for (auto& change : unjudged_) change.input.explainBy(time, time + shortcutsEnd);
  }
}

// What the user or another program has put there is what the user wants from now on.
bool GuardedPasteboard::judge(Clock::time_point now, bool mayWait) {
  // A clipboard manager takes over what it was given.
  const bool others = !unjudged_.front().fromTarget;
  if ((others || gaveBack_) && holdsWhatWasSaved()) {
    unjudged_.clear();
    base_ = pasteboard_->changeCount();
    return false;
  }
  if (others) {
    forget();
    return false;
  }
  const UserInput& input = unjudged_.back().input;
  if (input.first()) {
    if (!mayWait || !input.mayBeExplained(now))
      forget();
    return false;
  }
  answered(changesByTarget());
  giveBack();
  return true;
}

// Not while it is closed, when a capture may still read the text.
bool GuardedPasteboard::holdsWhatWasSaved() {
  if (closed_)
    return false;
  const auto items = pasteboard_->pasteboardItems();
  return items && holdsTheSame(*items, saved_);
}

void GuardedPasteboard::commandTyped() {
  saved_ = std::move(*contents_);
  stage_ = Stage::awaited;
  gaveBack_ = false;
  ++unanswered_;
  captureOver_ = keyboard_.lastTyped() + patience_.capture;
  keptUntil_ = keyboard_.lastTyped() + patience_.kept;
  unjudged_.clear();
  pasteboard_->beginWatch([this] { wake_.call(); });
  wake_.call();
}

void GuardedPasteboard::answered(std::ptrdiff_t times) {
  unanswered_ = std::max<std::ptrdiff_t>(unanswered_ - times, 0);
}

std::ptrdiff_t GuardedPasteboard::changesByTarget() const {
  return std::ranges::count_if(unjudged_, &ClipboardChange::fromTarget);
}

void GuardedPasteboard::giveBack() {
  if (saved_.empty())
    pasteboard_->clearContents();
  else
    pasteboard_->writeObjects(saved_);
  // The capture that is under way is told nothing of it.
  base_ = pasteboard_->changeCount();
  awaitFurtherAnswers();
}

// The contents are back. Several presses may have reached a program that was busy: as many copies
// are to come.
void GuardedPasteboard::awaitFurtherAnswers() {
  if (unanswered_ == 0)
    return forget();
  stage_ = Stage::awaited;
  gaveBack_ = true;
  unjudged_.clear();
  captureOver_ = Clock::now();
  wake_.call();
}

void GuardedPasteboard::forget() {
  stage_ = Stage::idle;
  unanswered_ = 0;
  saved_.clear();
  unjudged_.clear();
  pasteboard_->endWatch();
  tellWhetherBusy();
}

void GuardedPasteboard::tellWhetherBusy() {
  busy_ = contents_ || stage_ != Stage::idle;
  if (!busy_)
    becameFree_.call();
}

}  // namespace tavin::copy
