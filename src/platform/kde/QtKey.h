#pragma once

#include <cstdint>
#include <optional>

namespace tavin::kde {

// A combination as Qt numbers it: the key and the modifiers in one. None where it has a key or a
// modifier other than those of Tavin's shortcuts.
//
// KDE's shortcuts name the symbol on a key, not its place. The key in the ANSI "R" position is
// taken to bear R: true of QWERTY, QWERTZ and AZERTY, and of a layout without Latin letters beside
// one of those, whose letters KWin takes then. On Dvorak and its like it is where R is; on a layout
// without Latin letters alone there is none.
std::optional<int> qtKey(std::uint32_t keyCode, std::uint32_t modifiers);

}  // namespace tavin::kde
