#pragma once

#include <string>

namespace tavin::kde {

// By which letter KWin knows the key in the ANSI "R" position together with Control, as Qt numbers
// keys: the Latin one that the first layout to have one puts there, whichever layout is in use;
// without any what the first layout puts there. 0 where that is no letter; R where `keymap` is no
// keymap in XKB's format. With Shift a key may have another.
int keyInPlaceOfR(const std::string& keymap, bool shifted);

}  // namespace tavin::kde
