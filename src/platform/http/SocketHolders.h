#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "platform/Deadline.h"
#include "platform/http/LoopbackSocket.h"
#include "platform/posix/ProcessFolder.h"

namespace tavin::http {

// Tells whether a socket is held by a program of ours: the user's, in this process's user and mount
// namespaces, or a child of this process. What runs in a container, in a sandbox such as Flatpak's
// or behind a changed root is a stranger, and so is who cannot be seen.
//
// The process that was found last is asked first, which takes some ten microseconds and trusts
// nothing that was read before. Otherwise all processes are searched, which takes milliseconds,
// 0.3 s at most. Any thread.
class SocketHolders {
 public:
  struct Stranger {
    pid_t pid = 0;  // None where no process shows the socket.
    std::string name;
  };

  // `user` is whose programs are ours.
  explicit SocketHolders(uid_t user) : user_(user) {}

  // The stranger that holds the socket; none when it is ours.
  std::optional<Stranger> strangerAt(const LoopbackSocket& socket);

 private:
  bool isTrusted(const posix::ProcessFolder& process) const;
  void remember(posix::ProcessFolder process, int descriptor);
  bool lastHolderHas(std::uint32_t inode, Deadline deadline);
  bool search(std::uint32_t inode, Deadline deadline, Stranger& stranger);
  bool searchChildren(std::uint32_t inode, Deadline deadline);

  const uid_t user_;
  std::mutex mutex_;
  std::optional<posix::ProcessFolder> lastHolder_;
  // Its listener's and its last connection's, mostly.
  std::array<int, 2> lastDescriptors_{-1, -1};
};

}  // namespace tavin::http
