#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Deadline.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {

// A process by its folder in /proc. What is read through it is that process's, never that of a
// later one with the same number. Any thread; a process that has ended, or may not be looked at,
// answers as little as one can: no user, no files, no namespace in common.
class ProcessFolder {
 public:
  explicit ProcessFolder(pid_t pid);

  pid_t pid() const { return pid_; }
  bool runsAs(uid_t user) const;  // By its effective user.
  bool isOurChild() const;
  // Whether it is in our user and mount namespaces and has our root folder.
  bool seesOurFiles() const;
  std::string name() const;  // As the process itself chose it: at most 15 bytes of anything.

  // The descriptor by which it holds the socket, if it does. None too when the time is over.
  std::optional<int> descriptorOf(std::uint32_t socketInode, Deadline deadline) const;
  bool holds(int descriptor, std::uint32_t socketInode) const;

 private:
  pid_t pid_;
  FileDescriptor folder_;
};

// What the program that shows Tavin's windows calls its process.
inline constexpr char windowProgramName[] = "tavin-windows";
// Whether it is this process, or its child of that name.
bool showsOurWindows(std::int64_t pid);

// All that there are now, in the order of their numbers.
std::vector<pid_t> allProcesses();
std::vector<pid_t> childrenOf(pid_t pid);

}  // namespace tavin::posix
