#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "platform/Deadline.h"

namespace tavin::wayland {

// What sway tells of its windows, and no protocol for taskbars does.
struct SwayTree {
  std::int64_t focusedProcess = 0;
  std::string focusedAppId;  // Of X programs, the class.
  std::set<std::int64_t> processes;
  // The window that had the keyboard last on the workspace where the user is; 0 where it has none.
  std::int64_t lastFocused = 0;
};

// Asks sway over its socket. None where it is not sway's session or it does not answer in time.
std::optional<SwayTree> readSwayTree(Deadline deadline);

// Gives that window the keyboard.
void focusSwayWindow(std::int64_t id, Deadline deadline);

}  // namespace tavin::wayland
