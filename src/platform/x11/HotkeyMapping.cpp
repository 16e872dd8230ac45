#include "platform/x11/HotkeyMapping.h"

#include <algorithm>
#include <initializer_list>
#include <span>

namespace tavin::x11 {

using shortcuts::KeyCombination;

namespace {

constexpr xcb_keycode_t keyInPositionOfEscape = 9;
constexpr xcb_keycode_t keyInPositionOfR = 27;

constexpr xcb_keysym_t symEscape = 0xff1b;
constexpr xcb_keysym_t symScrollLock = 0xff14;
constexpr xcb_keysym_t symNumLock = 0xff7f;
constexpr xcb_keysym_t symAltLeft = 0xffe9;
constexpr xcb_keysym_t symAltRight = 0xffea;
constexpr xcb_keysym_t symSuperLeft = 0xffeb;
constexpr xcb_keysym_t symSuperRight = 0xffec;

// The symbols on each key, and the keys of each modifier.
struct Keys {
  xcb_keycode_t first;
  Reply<xcb_get_keyboard_mapping_reply_t> symbols;
  Reply<xcb_get_modifier_mapping_reply_t> modifiers;

  std::span<const xcb_keysym_t> symbolsOf(xcb_keycode_t key) const {
    const std::size_t width = symbols->keysyms_per_keycode;
    const std::span all(
        xcb_get_keyboard_mapping_keysyms(symbols.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols.get())));
    const std::size_t start = (key - std::size_t{first}) * width;
    return key < first || start + width > all.size() ? std::span<const xcb_keysym_t>{}
                                                     : all.subspan(start, width);
  }

  bool has(xcb_keycode_t key, std::initializer_list<xcb_keysym_t> wanted) const {
    return std::ranges::any_of(symbolsOf(key), [&](xcb_keysym_t symbol) {
      return std::ranges::find(wanted, symbol) != wanted.end();
    });
  }

  // The modifier that one of these symbols' keys works; 0 where none does.
  std::uint16_t maskOf(std::initializer_list<xcb_keysym_t> wanted) const {
    constexpr int firstFree = 3;  // Shift, Lock and Control have their meaning by their place.
    constexpr int modifierCount = 8;
    const int width = modifiers->keycodes_per_modifier;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (int modifier = firstFree; modifier < modifierCount; ++modifier) {
      for (int i = 0; i < width; ++i) {
        if (has(keys[modifier * width + i], wanted))
          return static_cast<std::uint16_t>(1U << modifier);
      }
    }
    return 0;
  }
};

Keys ask(const Connection& connection) {
  xcb_connection_t* c = connection.get();
  const xcb_setup_t* setup = xcb_get_setup(c);
  const xcb_keycode_t first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
  const auto symbols = xcb_get_keyboard_mapping(c, first, count);
  const auto modifiers = xcb_get_modifier_mapping(c);
  return {.first = first,
          .symbols = Reply<xcb_get_keyboard_mapping_reply_t>(
              xcb_get_keyboard_mapping_reply(c, symbols, nullptr)),
          .modifiers = Reply<xcb_get_modifier_mapping_reply_t>(
              xcb_get_modifier_mapping_reply(c, modifiers, nullptr))};
}

std::uint16_t orElse(std::uint16_t mask, std::uint16_t usual) { return mask != 0 ? mask : usual; }

}  // namespace

HotkeyMapping HotkeyMapping::read(const Connection& connection) {
  HotkeyMapping mapping;
  const Keys keys = ask(connection);
  if (keys.symbols && keys.modifiers) {
    const int last = xcb_get_setup(connection.get())->max_keycode;
    for (int key = keys.first; key <= last; ++key) {
      const auto keycode = static_cast<xcb_keycode_t>(key);
      const auto symbols = keys.symbolsOf(keycode);
      if (!symbols.empty() && symbols.front() == symEscape)
        mapping.escape_.push_back(keycode);
    }
    mapping.alt_ = orElse(keys.maskOf({symAltLeft, symAltRight}), mapping.alt_);
    mapping.super_ = orElse(keys.maskOf({symSuperLeft, symSuperRight}), mapping.super_);
    mapping.locks_ |= keys.maskOf({symNumLock}) | keys.maskOf({symScrollLock});
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
