#pragma once

#include <memory>
#include <optional>

#include "platform/copy/CopyKey.h"
#include "platform/x11/ActiveWindow.h"

namespace tavin::x11 {

// Types the copy command through XTEST. Work queue only.
class X11CopyKey final : public copy::CopyKey {
 public:
  // Null without a display, and where it lets nobody type.
  static std::unique_ptr<X11CopyKey> create();

  std::uint64_t heldModifiers() override;
  // What is held is released first, so it keeps no command back.
  bool prepare() override;
  void type() override;

 private:
  explicit X11CopyKey(std::unique_ptr<Connection> connection);
  void fake(std::uint8_t type, xcb_keycode_t key) const;

  const std::unique_ptr<Connection> connection_;
  const ActiveWindow activeWindow_;
  // The keys that have them on the keyboard's present layout.
  std::optional<xcb_keycode_t> control_;
  std::optional<xcb_keycode_t> insert_;
};

}  // namespace tavin::x11
