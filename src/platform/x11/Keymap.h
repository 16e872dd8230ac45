#pragma once

#include <initializer_list>
#include <span>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// What the layout has put on the keys, as the display tells it at one moment.
class Keymap {
 public:
  explicit Keymap(const Connection& connection);

  // Whether the display told it. Without it no key has a symbol.
  bool isKnown() const { return symbols_ != nullptr; }
  // The keys from the first to the last, that one included.
  int firstKey() const { return firstKey_; }
  int lastKey() const { return lastKey_; }
  // A key's symbols, each layout's one after the other; empty for what is no key.
  std::span<const xcb_keysym_t> symbolsOf(int key) const;
  bool hasAny(int key, std::initializer_list<xcb_keysym_t> wanted) const;

 private:
  int firstKey_;
  int lastKey_;
  Reply<xcb_get_keyboard_mapping_reply_t> symbols_;
};

}  // namespace tavin::x11
