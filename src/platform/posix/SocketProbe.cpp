#include "platform/posix/SocketProbe.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <ctime>

#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {
namespace {

constexpr timespec retryInterval{0, 10'000'000};  // 10 ms.

// A server that is busy may have its queue full for a moment, which poll() does not tell.
bool connectWithin(int fd, const sockaddr* address, socklen_t length, Deadline deadline) {
  while (connect(fd, address, length) != 0) {
    if ((errno != EAGAIN && errno != EINTR) || deadline.passed())
      return false;
    nanosleep(&retryInterval, nullptr);
  }
  return true;
}

bool waitFor(int fd, short events, Deadline deadline) {
  pollfd descriptor{fd, events, 0};
  int ready = 0;
  do {
    ready = poll(&descriptor, 1, deadline.remainingMs());
  } while (ready < 0 && errno == EINTR);
  return ready == 1 && (descriptor.revents & events) != 0;
}

}  // namespace

bool socketAnswers(const std::string& name, std::string_view greeting, Deadline deadline) {
  sockaddr_un address{};
  if (name.empty() || name.size() >= sizeof address.sun_path)
    return false;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, name.data(), name.size());
  const std::size_t end = name.front() == '\0' ? 0 : 1;
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + end);
  const FileDescriptor fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!fd ||
      !connectWithin(fd.get(), reinterpret_cast<const sockaddr*>(&address), length, deadline))
    return false;
  if (send(fd.get(), greeting.data(), greeting.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(greeting.size()))
    return false;
  char answer[16];
  return waitFor(fd.get(), POLLIN, deadline) && recv(fd.get(), answer, sizeof answer, 0) > 0;
}

}  // namespace tavin::posix
