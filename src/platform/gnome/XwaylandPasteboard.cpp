#include "platform/gnome/XwaylandPasteboard.h"

#include <algorithm>
#include <utility>

namespace tavin::gnome {
namespace {

constexpr std::chrono::milliseconds answerDeadline(300);

}  // namespace

std::optional<copy::Clipboard> XwaylandPasteboard::create(Maker make, const QDBusConnection& bus) {
  auto first = make();
  if (!first)
    return std::nullopt;
  std::unique_ptr<XwaylandPasteboard> pasteboard(
      new XwaylandPasteboard(std::move(make), std::move(*first), bus));
  const auto handOver = [current = pasteboard->handOver_] {
    std::unique_lock lock(current->mutex);
    const auto run = current->run;
    lock.unlock();
    if (run)
      run();
  };
  return copy::Clipboard{std::move(pasteboard), handOver};
}

XwaylandPasteboard::XwaylandPasteboard(Maker make, copy::Clipboard first,
                                       const QDBusConnection& bus)
    : make_(std::move(make)), bus_(bus) {
  use(std::move(first));
}

void XwaylandPasteboard::use(copy::Clipboard clipboard) {
  pasteboard_ = std::move(clipboard.pasteboard);
  const std::lock_guard lock(handOver_->mutex);
  handOver_->run = std::move(clipboard.handOver);
}

// The first step of each copy.
std::optional<std::vector<PasteboardItem>> XwaylandPasteboard::pasteboardItems() {
  const auto display = probe_.look();
  if (display == x11::DisplayProbe::Display::silent)
    return std::nullopt;
  if (display == x11::DisplayProbe::Display::other)
    use(make_().value_or(copy::Clipboard{}));
  return pasteboard_ ? pasteboard_->pasteboardItems() : std::nullopt;
}

std::int64_t XwaylandPasteboard::changeCount() {
  return pasteboard_ ? pasteboard_->changeCount() : 0;
}

std::optional<QString> XwaylandPasteboard::string() {
  return pasteboard_ ? pasteboard_->string() : std::nullopt;
}

void XwaylandPasteboard::clearContents() {
  if (pasteboard_)
    pasteboard_->clearContents();
}

void XwaylandPasteboard::writeObjects(const std::vector<PasteboardItem>& items) {
  if (pasteboard_)
    pasteboard_->writeObjects(items);
}

void XwaylandPasteboard::beginWatch(std::function<void()> onChange) {
  watchedSince_ = Clock::now();
  pressIsOver_ = watchedSince_ + copy::shortcutsEnd;
  if (pasteboard_)
    pasteboard_->beginWatch(std::move(onChange));
}

void XwaylandPasteboard::endWatch() {
  if (pasteboard_)
    pasteboard_->endWatch();
}

// The shell tells of the last input alone: where a shortcut explains that, what was before it is
// not known.
std::vector<copy::ClipboardChange> XwaylandPasteboard::takeChanges() {
  auto changes = pasteboard_ ? pasteboard_->takeChanges() : std::vector<copy::ClipboardChange>();
  if (changes.empty())
    return changes;
  // The command's own keys may come this late.
  for (auto& change : changes)
    change.input.explainBy(watchedSince_, watchedSince_ + copy::shortcutsEnd);
  const auto asked = Clock::now();
  QDBusPendingCall answer = askIdleTime(bus_, answerDeadline);
  answer.waitForFinished();
  const auto last = lastInput(asked, answer).latest;
  if (last > pressIsOver_)
    changes.back().input.note(last);
  return changes;
}

void XwaylandPasteboard::shortcutArrived(copy::UserInput::Time time) {
  pressIsOver_ = std::max(pressIsOver_, time + copy::shortcutsEnd);
  if (pasteboard_)
    pasteboard_->shortcutArrived(time);
}

}  // namespace tavin::gnome
