#include "platform/desktop/BusProbe.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QStringList>
#include <cerrno>
#include <cstring>
#include <optional>

#include "platform/posix/FileDescriptor.h"

namespace tavin::desktop {
namespace {

struct SocketAddress {
  sockaddr_un name{};
  socklen_t length = 0;
};

// The first socket that a D-Bus address names; buses of a session have no other transport.
std::optional<SocketAddress> socketIn(const QString& address) {
  const QString first = address.section(';', 0, 0);
  if (!first.startsWith("unix:"))
    return std::nullopt;
  for (const QString& pair : first.mid(5).split(',')) {
    const bool abstract = pair.startsWith("abstract=");
    if (!abstract && !pair.startsWith("path="))
      continue;
    const QByteArray path = QByteArray::fromPercentEncoding(pair.section('=', 1).toUtf8());
    SocketAddress socket;
    const std::size_t offset = abstract ? 1 : 0;
    const auto size = static_cast<std::size_t>(path.size());
    if (offset + size >= sizeof(socket.name.sun_path))
      return std::nullopt;
    socket.name.sun_family = AF_UNIX;
    std::memcpy(socket.name.sun_path + offset, path.constData(), size);
    socket.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + offset + size +
                                           (abstract ? 0 : 1));
    return socket;
  }
  return std::nullopt;
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

bool busAnswers(const QString& address, Deadline deadline) {
  const auto socketAddress = socketIn(address);
  if (!socketAddress)
    return false;
  const posix::FileDescriptor fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!fd || connect(fd.get(), reinterpret_cast<const sockaddr*>(&socketAddress->name),
                     socketAddress->length) != 0)
    return false;
  // A zero byte, then the first question of the protocol; any answer will do.
  const QByteArray identity = QByteArray::number(getuid()).toHex();
  const QByteArray hello = QByteArray(1, '\0') + "AUTH EXTERNAL " + identity + "\r\n";
  if (send(fd.get(), hello.constData(), static_cast<std::size_t>(hello.size()), MSG_NOSIGNAL) !=
      hello.size())
    return false;
  char answer[16];
  return waitFor(fd.get(), POLLIN, deadline) && recv(fd.get(), answer, sizeof(answer), 0) > 0;
}

}  // namespace tavin::desktop
