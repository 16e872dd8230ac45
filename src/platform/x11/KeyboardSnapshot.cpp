#include "platform/x11/KeyboardSnapshot.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/Keyboard.h"

namespace tavin::x11 {
namespace {

// The columns of the core mapping that need no modifier: of the first layout and of the second.
constexpr std::size_t plainColumns[] = {0, 2};

std::uint64_t flagOfSymbol(std::uint32_t symbol) {
  switch (symbol) {
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
      return EventFlags::shift;
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
      return EventFlags::control;
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_ISO_Level3_Shift:  // AltGr: it stands where Option does.
      return EventFlags::option;
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
    case XKB_KEY_Hyper_L:
    case XKB_KEY_Hyper_R:
      return EventFlags::command;
    default:
      return 0;
  }
}

// Both questions are on their way before either answer is waited for.
Reply<xcb_query_keymap_reply_t> keysDown(const Connection& connection,
                                         xcb_query_keymap_cookie_t cookie) {
  return Reply<xcb_query_keymap_reply_t>(xcb_query_keymap_reply(connection.get(), cookie, nullptr));
}

}  // namespace

KeyboardSnapshot::KeyboardSnapshot(const Connection& connection)
    : KeyboardSnapshot(connection, xcb_query_keymap(connection.get())) {}

KeyboardSnapshot::KeyboardSnapshot(const Connection& connection, xcb_query_keymap_cookie_t down)
    : map_(connection), down_(keysDown(connection, down)) {}

bool KeyboardSnapshot::isDown(int key) const {
  return down_ && (down_->keys[key / 8] >> (key % 8) & 1) != 0;
}

std::uint64_t KeyboardSnapshot::flagOf(int key) const {
  const auto symbols = map_.symbolsOf(key);
  return symbols.empty() ? 0 : flagOfSymbol(symbols.front());
}

std::uint64_t KeyboardSnapshot::flags() const {
  std::uint64_t flags = 0;
  for (const xcb_keycode_t key : heldModifierKeys()) flags |= flagOf(key);
  return flags;
}

std::vector<xcb_keycode_t> KeyboardSnapshot::heldModifierKeys() const {
  std::vector<xcb_keycode_t> held;
  for (int key = map_.firstKey(); key <= map_.lastKey(); ++key) {
    if (isDown(key) && flagOf(key) != 0)
      held.push_back(static_cast<xcb_keycode_t>(key));
  }
  return held;
}

std::optional<xcb_keycode_t> KeyboardSnapshot::keyFor(std::uint32_t symbol) const {
  for (const std::size_t column : plainColumns) {
    for (int key = map_.firstKey(); key <= map_.lastKey(); ++key) {
      const auto symbols = map_.symbolsOf(key);
      if (column < symbols.size() && symbols[column] == symbol)
        return static_cast<xcb_keycode_t>(key);
    }
  }
  return std::nullopt;
}

}  // namespace tavin::x11
