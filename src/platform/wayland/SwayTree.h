#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "platform/Deadline.h"

namespace tavin::wayland {

// What sway tells of the windows' processes, which no protocol for taskbars does.
struct SwayTree {
  std::int64_t focusedProcess = 0;
  std::string focusedAppId;  // Of X programs, the class.
  std::set<std::int64_t> processes;
};

// Asks sway over the socket that SWAYSOCK names. None where that is not set, nothing answers there
// in time, or not in sway's language.
std::optional<SwayTree> readSwayTree(Deadline deadline);

}  // namespace tavin::wayland
