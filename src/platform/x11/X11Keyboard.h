#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/copy/CopyKeyboard.h"
#include "platform/x11/ActiveWindow.h"

namespace tavin::x11 {

// Types the copy command through XTEST. Work queue only.
class X11Keyboard final : public copy::CopyKeyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys. Null without a display.
  static std::unique_ptr<X11Keyboard> create(std::function<bool()> mayCopy);

  // Whether the display lets us type at all. Any thread.
  bool canType() const { return canType_; }

  std::uint64_t flagsState() override;

 private:
  X11Keyboard(std::unique_ptr<Connection> connection, std::function<bool()> mayCopy);
  bool prepareChord() override;
  void typeChord() override;
  void fake(std::uint8_t type, xcb_keycode_t key) const;

  const std::unique_ptr<Connection> connection_;
  const ActiveWindow activeWindow_;
  const bool canType_;
  // The keys that bear them on the keyboard's present layout.
  std::optional<xcb_keycode_t> control_;
  std::optional<xcb_keycode_t> insert_;
};

}  // namespace tavin::x11
