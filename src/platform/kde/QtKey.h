#pragma once

#include <cstdint>
#include <optional>

namespace tavin::kde {

// A combination as Qt numbers it: the key and the modifiers in one. None where it has a key or a
// modifier other than those of Tavin's shortcuts.
//
// KDE's shortcuts name the symbol on a key, not its place: `inPlaceOfR` is the one of the key in
// the ANSI "R" position, 0 where it has none.
std::optional<int> qtKey(std::uint32_t keyCode, std::uint32_t modifiers, int inPlaceOfR);

}  // namespace tavin::kde
