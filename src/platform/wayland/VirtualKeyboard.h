#pragma once

#include <memory>

#include "platform/copy/CopyKey.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Types the copy command through a keyboard of its own, so that what the user holds down on the
// real one does not matter. Work queue only.
class VirtualKeyboard final : public copy::CopyKey {
 public:
  // Null where the compositor has no virtual keyboards or refuses us one.
  static std::unique_ptr<VirtualKeyboard> create();

  std::uint64_t heldModifiers() override { return 0; }
  void type() override;

 private:
  VirtualKeyboard(std::unique_ptr<Connection> connection, Owned<zwp_virtual_keyboard_v1> keyboard);

  // Its own: a compositor that does not trust us breaks the connection.
  const std::unique_ptr<Connection> connection_;
  const Owned<zwp_virtual_keyboard_v1> keyboard_;
};

}  // namespace tavin::wayland
