#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/Keyboard.h"
#include "platform/portal/RemoteDesktop.h"

namespace tavin::portal {

// What becomes of the modifiers that the user holds down: the compositor adds them to every key.
struct ModifierHabits {
  // Those held now, as far as the desktop tells; empty where it tells nothing.
  std::function<std::uint64_t()> held;
  // The compositor lets go of a key that another keyboard holds.
  bool released = false;
};

// Types with the user's leave, through the desktop's portal. The one event that it makes is the
// copy command, and it arrives as Control+Insert: Control+C would end what runs in a terminal. No
// event is made where there is no leave yet, and none while a modifier is held that cannot be
// released. Work queue only, save its making and end: main thread.
class PortalKeyboard final : public Keyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys.
  PortalKeyboard(std::shared_ptr<RemoteDesktop> desktop, std::function<bool()> mayCopy,
                 ModifierHabits modifiers);

  std::uint64_t flagsState() override;
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) override;

 private:
  class CopyEvent;
  class ReleasedEvent;

  std::unique_ptr<KeyboardEvent> createCopyEvent();

  const std::shared_ptr<RemoteDesktop> desktop_;
  const std::function<bool()> mayCopy_;
  const ModifierHabits modifiers_;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool chordMade_ = false;
};

}  // namespace tavin::portal
