#include "platform/x11/KeyState.h"

#include "platform/Keyboard.h"

namespace tavin::x11 {
namespace {

// The columns of the core mapping that need no modifier: of the first layout and of the second.
constexpr int plainColumns[] = {0, 2};

std::uint64_t flagOfSymbol(std::uint32_t symbol) {
  switch (symbol) {
    case 0xffe1:  // Shift_L
    case 0xffe2:  // Shift_R
      return EventFlags::shift;
    case 0xffe3:  // Control_L
    case 0xffe4:  // Control_R
      return EventFlags::control;
    case 0xffe7:  // Meta_L
    case 0xffe8:  // Meta_R
    case 0xffe9:  // Alt_L
    case 0xffea:  // Alt_R
    case 0xfe03:  // ISO_Level3_Shift, AltGr: it stands where Option does.
      return EventFlags::option;
    case 0xffeb:  // Super_L
    case 0xffec:  // Super_R
    case 0xffed:  // Hyper_L
    case 0xffee:  // Hyper_R
      return EventFlags::command;
    default:
      return 0;
  }
}

}  // namespace

KeyState::KeyState(const Connection& connection) {
  xcb_connection_t* c = connection.get();
  const xcb_setup_t* setup = xcb_get_setup(c);
  first_ = setup->min_keycode;
  keys_ = setup->max_keycode - setup->min_keycode + 1;
  const auto down = xcb_query_keymap(c);
  const auto symbols = xcb_get_keyboard_mapping(c, first_, static_cast<std::uint8_t>(keys_));
  down_.reset(xcb_query_keymap_reply(c, down, nullptr));
  symbols_.reset(xcb_get_keyboard_mapping_reply(c, symbols, nullptr));
  if (symbols_)
    columns_ = symbols_->keysyms_per_keycode;
  else
    keys_ = 0;
}

bool KeyState::isDown(xcb_keycode_t key) const {
  return down_ && (down_->keys[key / 8] >> (key % 8) & 1) != 0;
}

std::uint64_t KeyState::flagOf(xcb_keycode_t key) const {
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(symbols_.get());
  return columns_ == 0
             ? 0
             : flagOfSymbol(symbols[static_cast<std::ptrdiff_t>(key - first_) * columns_]);
}

std::uint64_t KeyState::flags() const {
  std::uint64_t flags = 0;
  for (const xcb_keycode_t key : heldModifierKeys()) flags |= flagOf(key);
  return flags;
}

std::vector<xcb_keycode_t> KeyState::heldModifierKeys() const {
  std::vector<xcb_keycode_t> held;
  for (int i = 0; i < keys_; ++i) {
    const auto key = static_cast<xcb_keycode_t>(first_ + i);
    if (isDown(key) && flagOf(key) != 0)
      held.push_back(key);
  }
  return held;
}

std::optional<xcb_keycode_t> KeyState::keyFor(std::uint32_t symbol) const {
  for (const int column : plainColumns) {
    for (int i = 0; i < keys_ && column < columns_; ++i) {
      if (xcb_get_keyboard_mapping_keysyms(symbols_.get())[i * columns_ + column] == symbol)
        return static_cast<xcb_keycode_t>(first_ + i);
    }
  }
  return std::nullopt;
}

}  // namespace tavin::x11
