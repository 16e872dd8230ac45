#pragma once

#include <memory>

#include "platform/copy/WatchedPasteboard.h"
#include "platform/x11/ClipboardServer.h"
#include "platform/x11/SelectionReader.h"

namespace tavin::x11 {

// The CLIPBOARD selection, read and given back byte for byte. A type's name is its target's.
class X11Pasteboard final : public copy::WatchedPasteboard {
 public:
  X11Pasteboard(std::unique_ptr<SelectionReader> reader, std::shared_ptr<ClipboardServer> server);

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override;
  void clearContents() override;
  void writeObjects(const std::vector<PasteboardItem>& items) override;
  void beginWatch(std::function<void()> onChange) override;
  void endWatch() override { server_->endWatch(); }
  std::vector<copy::ClipboardChange> takeChanges() override { return server_->takeChanges(); }
  void shortcutArrived(copy::UserInput::Time time) override { server_->shortcutArrived(time); }

 private:
  const std::unique_ptr<SelectionReader> reader_;
  const std::shared_ptr<ClipboardServer> server_;
};

}  // namespace tavin::x11
