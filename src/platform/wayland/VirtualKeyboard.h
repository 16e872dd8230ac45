#pragma once

#include <functional>
#include <memory>

#include "platform/Keyboard.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Types through a keyboard of its own, so that what the user holds down on the real one does not
// matter. The one event that it makes is the copy command, and it arrives as Control+Insert:
// Control+C would end what runs in a terminal. Between two events no key is held, so either of them
// may stay away. Work queue only.
class VirtualKeyboard final : public Keyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys. Null where the compositor has no
  // virtual keyboards or refuses us one.
  static std::unique_ptr<VirtualKeyboard> create(std::function<bool()> mayCopy);

  std::uint64_t flagsState() override { return 0; }
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) override;

 private:
  class CopyEvent;
  class ReleasedEvent;

  VirtualKeyboard(std::unique_ptr<Connection> connection, Owned<zwp_virtual_keyboard_v1> keyboard,
                  std::function<bool()> mayCopy);
  void typeChord();

  // Its own: a compositor that does not trust us breaks the connection.
  const std::unique_ptr<Connection> connection_;
  const Owned<zwp_virtual_keyboard_v1> keyboard_;
  const std::function<bool()> mayCopy_;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool chordMade_ = false;
};

}  // namespace tavin::wayland
