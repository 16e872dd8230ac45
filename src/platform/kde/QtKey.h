#pragma once

#include <optional>

#include "platform/shortcuts/KeyCombination.h"

namespace tavin::kde {

// A combination as Qt numbers it: the key and the modifiers in one.
//
// KDE's shortcuts name the symbol on a key, not its place: `inPlaceOfR` is the one of the key in
// the ANSI "R" position; 0, and the combination none, where it has none.
std::optional<int> qtKey(const shortcuts::KeyCombination& combination, int inPlaceOfR);

}  // namespace tavin::kde
