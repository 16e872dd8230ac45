#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/x11/Keymap.h"

namespace tavin::x11 {

// The keyboard at one moment: which keys are down, and what the layout has put on them.
class KeyboardSnapshot {
 public:
  explicit KeyboardSnapshot(const Connection& connection);

  // The modifiers held down, as EventFlags. Locks (CapsLock, NumLock) are none.
  std::uint64_t flags() const;
  // The keys that hold them.
  std::vector<xcb_keycode_t> heldModifierKeys() const;
  // The key that has this symbol without any modifier, in the first layout that has it.
  std::optional<xcb_keycode_t> keyFor(std::uint32_t symbol) const;

 private:
  KeyboardSnapshot(const Connection& connection, xcb_query_keymap_cookie_t down);
  bool isDown(int key) const;
  std::uint64_t flagOf(int key) const;

  const Keymap map_;
  const Reply<xcb_query_keymap_reply_t> down_;
};

}  // namespace tavin::x11
