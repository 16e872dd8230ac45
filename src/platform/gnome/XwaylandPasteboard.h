#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/copy/Clipboard.h"
#include "platform/x11/DisplayProbe.h"

namespace tavin::gnome {

// The clipboard through Xwayland, which GNOME ends and starts again as it likes: each look at the
// contents finds the display that is there now. What was served on one that has ended is lost.
class XwaylandPasteboard final : public Pasteboard {
 public:
  using Maker = std::function<std::optional<copy::Clipboard>()>;

  // None where there is no display now.
  static std::optional<copy::Clipboard> create(Maker make);

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override;
  void clearContents() override;
  void writeObjects(const std::vector<PasteboardItem>& items) override;

 private:
  // Of the clipboard in use; called from other threads, too.
  struct HandOver {
    std::mutex mutex;
    std::function<void()> run;
  };

  XwaylandPasteboard(Maker make, copy::Clipboard first);
  void use(copy::Clipboard clipboard);

  const Maker make_;
  const std::shared_ptr<HandOver> handOver_ = std::make_shared<HandOver>();
  std::unique_ptr<Pasteboard> pasteboard_;  // Null where the display is gone.
  x11::DisplayProbe probe_;
};

}  // namespace tavin::gnome
