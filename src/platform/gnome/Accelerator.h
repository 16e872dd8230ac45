#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace tavin::gnome {

// A key combination as GNOME's settings write it, such as "<Control><Alt>r".
struct Accelerator {
  std::uint32_t modifiers = 0;  // As HotkeyModifiers.
  QString key;                  // A symbol's name or a key code such as "0x1b", in small letters.

  bool operator==(const Accelerator&) const = default;

  // None for what is no combination, such as "" and "disabled", or has modifiers of other kinds.
  static std::optional<Accelerator> parse(const QString& text);
  QString text() const;
};

// One of Tavin's combinations for GNOME.
struct Combination {
  Accelerator ours;  // What is registered: the R key by its place, whatever the layout.
  Accelerator
      theirs;  // What others would write for the same: that key by its symbol, taken to be R.

  // None for a key or a modifier other than those of Tavin's shortcuts.
  static std::optional<Combination> of(std::uint32_t keyCode, std::uint32_t modifiers);
  bool isThe(const Accelerator& other) const { return other == ours || other == theirs; }
};

}  // namespace tavin::gnome
