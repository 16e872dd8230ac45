#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace tavin::posix {

// Files that another program may have laid, to harm us: never waited for as one waits for a pipe or
// a device, and read up to 64 kB. None where it is no regular file or cannot be read. Any thread.

std::optional<std::string> readForeignFile(const std::string& path);

// The same from another process's root folder, out of which no link leads. `path` is relative.
std::optional<std::string> readFileOf(pid_t pid, const std::string& path);

}  // namespace tavin::posix
