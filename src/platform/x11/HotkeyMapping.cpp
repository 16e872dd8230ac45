#include "platform/x11/HotkeyMapping.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <initializer_list>

#include "platform/x11/Keymap.h"

namespace tavin::x11 {

using shortcuts::KeyCombination;

namespace {

constexpr xcb_keycode_t keyInPositionOfEscape = 9;
constexpr xcb_keycode_t keyInPositionOfR = 27;

// The keys of each modifier.
using Modifiers = Reply<xcb_get_modifier_mapping_reply_t>;

// The modifier that one of these symbols' keys works; 0 where none does.
std::uint16_t maskOf(const Keymap& keys, const Modifiers& modifiers,
                     std::initializer_list<xcb_keysym_t> wanted) {
  constexpr int firstFree = 3;  // Shift, Lock and Control have their meaning by their place.
  constexpr int modifierCount = 8;
  const int width = modifiers->keycodes_per_modifier;
  const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
  for (int modifier = firstFree; modifier < modifierCount; ++modifier) {
    for (int i = 0; i < width; ++i) {
      if (keys.hasAny(keycodes[modifier * width + i], wanted))
        return static_cast<std::uint16_t>(1U << modifier);
    }
  }
  return 0;
}

std::uint16_t orElse(std::uint16_t mask, std::uint16_t usual) { return mask != 0 ? mask : usual; }

}  // namespace

HotkeyMapping HotkeyMapping::read(const Connection& connection) {
  HotkeyMapping mapping;
  xcb_connection_t* c = connection.get();
  const auto cookie = xcb_get_modifier_mapping(c);
  const Keymap keys(connection);
  const Modifiers modifiers(xcb_get_modifier_mapping_reply(c, cookie, nullptr));
  if (keys.isKnown() && modifiers) {
    for (int key = keys.firstKey(); key <= keys.lastKey(); ++key) {
      const auto symbols = keys.symbolsOf(key);
      if (!symbols.empty() && symbols.front() == XKB_KEY_Escape)
        mapping.escape_.push_back(static_cast<xcb_keycode_t>(key));
    }
    const auto mask = [&](std::initializer_list<xcb_keysym_t> symbols) {
      return maskOf(keys, modifiers, symbols);
    };
    mapping.alt_ = orElse(mask({XKB_KEY_Alt_L, XKB_KEY_Alt_R}), mapping.alt_);
    mapping.super_ = orElse(mask({XKB_KEY_Super_L, XKB_KEY_Super_R}), mapping.super_);
    mapping.locks_ |= mask({XKB_KEY_Num_Lock}) | mask({XKB_KEY_Scroll_Lock});
    mapping.locks_ &= static_cast<std::uint16_t>(~(mapping.alt_ | mapping.super_));
  }
  if (mapping.escape_.empty())
    mapping.escape_.push_back(keyInPositionOfEscape);
  return mapping;
}

std::vector<xcb_keycode_t> HotkeyMapping::keycodes(KeyCombination::Key key) const {
  return key == KeyCombination::Key::escape ? escape_ : std::vector{keyInPositionOfR};
}

std::uint16_t HotkeyMapping::modifierMask(const KeyCombination& combination) const {
  std::uint16_t mask = 0;
  mask |= combination.has(KeyCombination::super) ? super_ : 0;
  mask |= combination.has(KeyCombination::shift) ? XCB_MOD_MASK_SHIFT : 0;
  mask |= combination.has(KeyCombination::alt) ? alt_ : 0;
  mask |= combination.has(KeyCombination::control) ? XCB_MOD_MASK_CONTROL : 0;
  return mask;
}

std::vector<std::uint16_t> HotkeyMapping::withLocks(std::uint16_t mask) const {
  std::vector<std::uint16_t> variants;
  // Every subset of the locks, the full one first, the empty one last.
  for (std::uint16_t subset = locks_;; subset = (subset - 1) & locks_) {
    variants.push_back(mask | subset);
    if (subset == 0)
      return variants;
  }
}

std::uint16_t HotkeyMapping::withoutLocks(std::uint16_t state) const {
  constexpr std::uint16_t modifierBits = 0xff;
  return state & modifierBits & static_cast<std::uint16_t>(~locks_);
}

}  // namespace tavin::x11
