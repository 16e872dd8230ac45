#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tavin::atspi {

// What can be told about a program from its window's class names (in lower case) and its process.
// `windowProcesses` are all that show windows: a terminal that a program started is no part of it.

// Whether typing into it may reach what runs in a terminal. Where its open files may not be looked
// at, the answer is yes.
bool isTerminal(const std::vector<std::string>& classNames, std::int64_t pid,
                const std::set<std::int64_t>& windowProcesses);
// Whether it is built on a browser engine.
bool isBrowser(const std::vector<std::string>& classNames, std::int64_t pid);
// Whether it is known to have no key that copies.
bool lacksCopyKey(const std::vector<std::string>& classNames);

}  // namespace tavin::atspi
