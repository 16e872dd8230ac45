#pragma once

#include <compare>
#include <cstdint>
#include <optional>

namespace tavin::shortcuts {

// One of Tavin's combinations as keyboards have it: a key with modifiers. HotkeyService speaks of
// them as macOS does; below it there are only these.
struct KeyCombination {
  enum class Key : std::uint8_t {
    escape,
    ansiR,  // The key in the place of R on an ANSI keyboard, whatever the layout puts there.
  };
  enum Modifier : std::uint8_t { super = 1, shift = 2, alt = 4, control = 8 };

  Key key = Key::escape;
  std::uint8_t modifiers = 0;  // Of Modifier.

  // None for a key or a modifier other than those of Tavin's shortcuts.
  static std::optional<KeyCombination> of(std::uint32_t keyCode, std::uint32_t modifiers);

  bool has(Modifier modifier) const { return (modifiers & modifier) != 0; }
  auto operator<=>(const KeyCombination&) const = default;
};

}  // namespace tavin::shortcuts
