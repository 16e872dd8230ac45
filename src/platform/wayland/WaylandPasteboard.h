#pragma once

#include <memory>

#include "platform/copy/WatchedPasteboard.h"
#include "platform/wayland/Compositor.h"

namespace tavin::wayland {

// The clipboard through data control, read and given back byte for byte.
class WaylandPasteboard final : public copy::WatchedPasteboard {
 public:
  explicit WaylandPasteboard(std::shared_ptr<Compositor> compositor);

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override;
  void clearContents() override;
  void writeObjects(const std::vector<PasteboardItem>& items) override;
  void beginWatch(std::function<void()> onChange) override;
  void endWatch() override;
  std::vector<copy::ClipboardChange> takeChanges() override;
  void shortcutArrived(copy::UserInput::Time time) override;

 private:
  const std::shared_ptr<Compositor> compositor_;
};

}  // namespace tavin::wayland
