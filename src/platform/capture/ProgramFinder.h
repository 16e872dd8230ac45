#pragma once

#include "platform/atspi/FocusFinder.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::capture {

struct FoundProgram {
  atspi::ObjectRef program;
  atspi::FocusSearch search;
};

// Finds the program in front on the accessibility bus, and what has the keyboard in it: by its
// process, else by its sandbox, else as the first of the programs without windows of their own
// (their messages come through a proxy) that says it has the focus. Where the window system knows
// no process, as the first of all programs that says so, or at least that its window is the active
// one. None where it is not there.
std::optional<FoundProgram> findProgram(atspi::Bus& bus, windows::WindowSystem& windows,
                                        const windows::FrontWindow& front, Deadline deadline);

}  // namespace tavin::capture
