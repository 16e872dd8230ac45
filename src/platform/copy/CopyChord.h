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

// The keys with Control and Insert; these, unless a layout has moved them.
struct ChordKeys {
  int control = KEY_LEFTCTRL;
  int insert = KEY_INSERT;
};

// Where a keymap, in XKB's format, has them without any modifier, whichever of its layouts is in
// use. None where it lacks one; the usual ones where `keymap` is no keymap.
std::optional<ChordKeys> chordKeysIn(const std::string& keymap);

// The same for the keymap that was told last; one that is told again is not searched again. One
// thread at a time.
class ChordInLayout {
 public:
  // Whether it has both keys: nothing can be copied without.
  bool lookUp(const std::string& keymap);
  // The usual ones until a keymap was told, and where it lacks one.
  ChordKeys keys() const { return keys_.value_or(ChordKeys()); }

 private:
  std::optional<std::string> keymap_;
  std::optional<ChordKeys> keys_;
};

// Control+Insert, pressed and released. With `releaseFirst` all modifiers that the user may hold
// come up before Insert goes down; none is pressed again afterwards: the user may have let go
// meanwhile, and then it would hang.
std::vector<KeyStep> copyChord(ChordKeys keys, bool releaseFirst);

}  // namespace tavin::copy
