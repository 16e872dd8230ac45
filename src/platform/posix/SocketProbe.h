#pragma once

#include <string>
#include <string_view>

#include "platform/Deadline.h"

namespace tavin::posix {

// Whether who listens on a local socket answers a greeting within the time; any answer will do. For
// the libraries that would wait without end for a server that hangs. `name` is a path, or, after a
// NUL, a name in the kernel's own space. Any thread.
bool socketAnswers(const std::string& name, std::string_view greeting, Deadline deadline);

}  // namespace tavin::posix
