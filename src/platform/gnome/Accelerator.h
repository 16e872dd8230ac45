#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "platform/shortcuts/KeyCombination.h"

namespace tavin::gnome {

// A key combination as GNOME's settings write it, such as "<Control><Alt>r".
struct Accelerator {
  std::uint8_t modifiers = 0;  // As KeyCombination has them.
  QString key;                 // A symbol's name or a key code such as "0x1b", in small letters.

  bool operator==(const Accelerator&) const = default;

  // None for what is no combination, such as "" and "disabled", or has modifiers of other kinds.
  static std::optional<Accelerator> parse(const QString& text);
  QString text() const;
};

// One of Tavin's combinations for GNOME.
struct BothAccelerators {
  Accelerator ours;  // What is registered: the R key by its place, whatever the layout.
  // What others would write for the same: that key by its symbol, taken to be R.
  Accelerator theirs;

  static BothAccelerators of(const shortcuts::KeyCombination& combination);
  bool isThe(const Accelerator& other) const { return other == ours || other == theirs; }
};

}  // namespace tavin::gnome
