#include "platform/x11/Keymap.h"

#include <algorithm>

namespace tavin::x11 {

Keymap::Keymap(const Connection& connection) {
  xcb_connection_t* c = connection.get();
  const xcb_setup_t* setup = xcb_get_setup(c);
  firstKey_ = setup->min_keycode;
  lastKey_ = setup->max_keycode;
  const auto cookie = xcb_get_keyboard_mapping(c, setup->min_keycode,
                                               static_cast<std::uint8_t>(lastKey_ - firstKey_ + 1));
  symbols_.reset(xcb_get_keyboard_mapping_reply(c, cookie, nullptr));
}

std::span<const xcb_keysym_t> Keymap::symbolsOf(int key) const {
  if (!isKnown() || key < firstKey_ || key > lastKey_)
    return {};
  const std::size_t width = symbols_->keysyms_per_keycode;
  const std::span all(
      xcb_get_keyboard_mapping_keysyms(symbols_.get()),
      static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols_.get())));
  const std::size_t start = static_cast<std::size_t>(key - firstKey_) * width;
  return start + width > all.size() ? std::span<const xcb_keysym_t>{} : all.subspan(start, width);
}

bool Keymap::hasAny(int key, std::initializer_list<xcb_keysym_t> wanted) const {
  return std::ranges::any_of(symbolsOf(key), [&](xcb_keysym_t symbol) {
    return std::ranges::find(wanted, symbol) != wanted.end();
  });
}

}  // namespace tavin::x11
