#pragma once

#include <cstdio>
#include <cstdlib>

namespace tavin::fuzz {

// Ends the target, with the input that led there, where something does not hold.
inline void claim(bool holds, const char* what) {
  if (holds)
    return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

}  // namespace tavin::fuzz
