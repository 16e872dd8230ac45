#include "platform/wayland/WaylandPasteboard.h"

#include <set>
#include <utility>

#include "platform/wayland/ReadClipboard.h"

namespace tavin::wayland {
namespace {

constexpr double secondsForSnapshot = 1.0;
constexpr double secondsForString = 1.0;

}  // namespace

WaylandPasteboard::WaylandPasteboard(std::shared_ptr<Compositor> compositor)
    : compositor_(std::move(compositor)) {}

std::optional<std::vector<PasteboardItem>> WaylandPasteboard::pasteboardItems() {
  compositor_->clipboard()->changeCount();  // What was cleared is cleared before it is read.
  return readClipboard(*compositor_->reader(), Deadline::in(secondsForSnapshot));
}

std::int64_t WaylandPasteboard::changeCount() { return compositor_->clipboard()->changeCount(); }

std::optional<QString> WaylandPasteboard::string() {
  return readText(*compositor_->reader(), SelectionKind::clipboard, Deadline::in(secondsForString));
}

void WaylandPasteboard::clearContents() { compositor_->clipboard()->clear(); }

void WaylandPasteboard::writeObjects(const std::vector<PasteboardItem>& items) {
  // A selection has one item only; of several, the first to have a type gives it.
  PasteboardItem all;
  std::set<QString> seen;
  for (const auto& item : items) {
    for (const auto& type : item.types) {
      if (seen.insert(type.first).second)
        all.types.push_back(type);
    }
  }
  compositor_->clipboard()->serve(std::move(all));
}

void WaylandPasteboard::beginWatch(std::function<void()> onChange) {
  compositor_->clipboard()->beginWatch(std::move(onChange));
}

void WaylandPasteboard::endWatch() { compositor_->clipboard()->endWatch(); }

std::vector<copy::ClipboardChange> WaylandPasteboard::takeChanges() {
  return compositor_->clipboard()->takeChanges();
}

void WaylandPasteboard::shortcutArrived(copy::UserInput::Time time) {
  compositor_->clipboard()->shortcutArrived(time);
}

}  // namespace tavin::wayland
