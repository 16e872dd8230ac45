#pragma once

#include <vector>

namespace tavin::copy {

// A key of the kernel's, going down or up.
struct KeyStep {
  int code;
  bool down;
};

// Control+Insert, pressed and released. With `releaseFirst` all modifiers that the user may hold
// come up before Insert goes down; none is pressed again afterwards: the user may have let go
// meanwhile, and then it would hang.
std::vector<KeyStep> copyChord(bool releaseFirst);

}  // namespace tavin::copy
