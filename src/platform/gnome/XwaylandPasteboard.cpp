#include "platform/gnome/XwaylandPasteboard.h"

#include <utility>

namespace tavin::gnome {

std::optional<copy::Clipboard> XwaylandPasteboard::create(Maker make) {
  auto first = make();
  if (!first)
    return std::nullopt;
  std::unique_ptr<XwaylandPasteboard> pasteboard(
      new XwaylandPasteboard(std::move(make), std::move(*first)));
  const auto handOver = [current = pasteboard->handOver_] {
    std::unique_lock lock(current->mutex);
    const auto run = current->run;
    lock.unlock();
    if (run)
      run();
  };
  return copy::Clipboard{std::move(pasteboard), handOver};
}

XwaylandPasteboard::XwaylandPasteboard(Maker make, copy::Clipboard first) : make_(std::move(make)) {
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

}  // namespace tavin::gnome
