#include "platform/posix/SocketProbe.h"

#include <poll.h>

#include <cerrno>
#include <ctime>

#include "platform/posix/LocalSocket.h"

namespace tavin::posix {
namespace {

constexpr timespec retryInterval{0, 10'000'000};  // 10 ms.

// A server that is busy may have its queue full for a moment, which poll() does not tell.
bool connectWithin(int fd, const LocalAddress& address, Deadline deadline) {
  while (connect(fd, address.get(), address.size()) != 0) {
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
  const LocalAddress address(name);
  const FileDescriptor fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!address || !fd || !connectWithin(fd.get(), address, deadline))
    return false;
  if (send(fd.get(), greeting.data(), greeting.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(greeting.size()))
    return false;
  char answer[16];
  return waitFor(fd.get(), POLLIN, deadline) && recv(fd.get(), answer, sizeof answer, 0) > 0;
}

}  // namespace tavin::posix
