#pragma once

#include <map>
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
  copy::ClipboardChanges watched() override { return server_->watched(); }

 private:
  struct Encoding {
    xcb_atom_t type;
    std::uint8_t format;
  };
  Encoding encodingOf(const QString& name, xcb_atom_t target, const QByteArray& bytes) const;

  const std::unique_ptr<SelectionReader> reader_;
  const std::shared_ptr<ClipboardServer> server_;
  // How the targets of the last snapshot were delivered, which an item has no place for.
  std::map<QString, Encoding> encodings_;
};

}  // namespace tavin::x11
