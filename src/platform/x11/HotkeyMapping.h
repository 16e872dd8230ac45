#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

#include "platform/shortcuts/KeyCombination.h"
#include "platform/x11/Connection.h"

namespace tavin::x11 {

// How Tavin's combinations stand on the keyboard as it is mapped now.
class HotkeyMapping {
 public:
  // Asks the display once. Parts that it does not tell get the usual values.
  static HotkeyMapping read(const Connection& connection);

  // Every key that is Escape, or the one in the ANSI "R" position.
  std::vector<xcb_keycode_t> keycodes(shortcuts::KeyCombination::Key key) const;
  // The modifiers of a key event.
  std::uint16_t modifierMask(const shortcuts::KeyCombination& combination) const;
  // The mask together with every state of the lock keys.
  std::vector<std::uint16_t> withLocks(std::uint16_t mask) const;
  // An event's modifiers without locks, buttons and keyboard group.
  std::uint16_t withoutLocks(std::uint16_t state) const;

  bool operator==(const HotkeyMapping&) const = default;

 private:
  std::vector<xcb_keycode_t> escape_;
  std::uint16_t alt_ = XCB_MOD_MASK_1;
  std::uint16_t super_ = XCB_MOD_MASK_4;
  std::uint16_t locks_ = XCB_MOD_MASK_LOCK;
};

}  // namespace tavin::x11
