#pragma once

#include <linux/input-event-codes.h>

#include <optional>
#include <string>
#include <vector>

namespace tavin::copy {

// A key of the kernel's, going down or up.
struct KeyStep {
  int code;
  bool down;
};

// The keys that bear Control and Insert; these, unless a layout has moved them.
struct ChordKeys {
  int control = KEY_LEFTCTRL;
  int insert = KEY_INSERT;
};

// Where a keymap, in XKB's format, has them without any modifier, in the first layout that has
// each. None where it lacks one; the usual ones where `keymap` is no keymap.
std::optional<ChordKeys> chordKeysIn(const std::string& keymap);

// Control+Insert, pressed and released. With `releaseFirst` all modifiers that the user may hold
// come up before Insert goes down; none is pressed again afterwards: the user may have let go
// meanwhile, and then it would hang.
std::vector<KeyStep> copyChord(ChordKeys keys, bool releaseFirst);

}  // namespace tavin::copy
