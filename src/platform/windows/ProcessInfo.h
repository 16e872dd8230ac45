#pragma once

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

namespace tavin::windows {

// What the kernel tells about other processes. Any thread; a process that has ended reads as empty.

std::vector<std::string> commandLine(pid_t pid);

enum class PtyMaster { none, held, unknown };
// Whether the process itself holds the controlling side of a pseudo-terminal, as what shows a
// terminal does. Unknown where its open files may not be looked at.
PtyMaster ptyMasterOf(pid_t pid);

// What sets one sandboxed program apart from the next, the same for its processes and for the proxy
// that carries its messages: the sandbox's instance, else the scope that the session put it in.
// Empty for a program that is in neither.
std::string sandboxOf(pid_t pid);

}  // namespace tavin::windows
