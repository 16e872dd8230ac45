#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "platform/windows/WindowSystem.h"

namespace tavin::windows {

// Adds to the window what its program is, by the window's class names (in lower case) and by its
// process: `terminal`, also where the process's open files may not be looked at, `browser` and
// `withoutCopyKey`. `windowProcesses` are all that show windows: a terminal that a program started
// is no part of it. Any thread; reads files of /proc alone.
void setProgramKind(FrontWindow& window, const std::vector<std::string>& classNames,
                    const std::set<std::int64_t>& windowProcesses);

}  // namespace tavin::windows
