#include "platform/wayland/SwaySocket.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/posix/LocalSocket.h"

namespace tavin::wayland {
namespace {

constexpr char magic[] = {'i', '3', '-', 'i', 'p', 'c'};
constexpr std::uint32_t longestAnswer = 16 << 20;

// What goes before each message, in the byte order of the machine.
struct [[gnu::packed]] Header {
  char start[sizeof(magic)];
  std::uint32_t length;
  std::uint32_t type;
};

posix::FileDescriptor connectToSway() {
  const char* path = std::getenv("SWAYSOCK");
  return posix::connectAtOnce(path ? path : "");
}

// Both together are short enough for the socket's buffer.
bool sendMessage(int socket, std::uint32_t type, const QByteArray& payload) {
  Header header{{}, static_cast<std::uint32_t>(payload.size()), type};
  std::memcpy(header.start, magic, sizeof(magic));
  const QByteArray bytes(reinterpret_cast<const char*>(&header), sizeof(header));
  return send(socket, (bytes + payload).constData(), sizeof(header) + payload.size(),
              MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof(header) + payload.size());
}

bool receiveAll(int socket, char* bytes, std::size_t size, Deadline deadline) {
  while (size > 0) {
    pollfd file{socket, POLLIN, 0};
    if (poll(&file, 1, deadline.remainingMs()) <= 0 && deadline.passed())
      return false;
    const auto count = recv(socket, bytes, size, 0);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR))
      return false;
    bytes += std::max<ssize_t>(count, 0);
    size -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
  }
  return true;
}

}  // namespace

std::optional<QByteArray> askSway(SwayMessage message, const QByteArray& payload,
                                  Deadline deadline) {
  const auto type = static_cast<std::uint32_t>(message);
  const auto socket = connectToSway();
  Header header{};
  if (!socket || !sendMessage(socket.get(), type, payload) ||
      !receiveAll(socket.get(), reinterpret_cast<char*>(&header), sizeof(header), deadline))
    return std::nullopt;
  if (std::memcmp(header.start, magic, sizeof(magic)) != 0 || header.type != type ||
      header.length > longestAnswer)
    return std::nullopt;
  QByteArray answer(static_cast<qsizetype>(header.length), Qt::Uninitialized);
  if (!receiveAll(socket.get(), answer.data(), header.length, deadline))
    return std::nullopt;
  return answer;
}

}  // namespace tavin::wayland
