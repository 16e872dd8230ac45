#include "platform/wayland/SwayTree.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/posix/FileDescriptor.h"

namespace tavin::wayland {
namespace {

constexpr char magic[] = {'i', '3', '-', 'i', 'p', 'c'};
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t longestAnswer = 16 << 20;

// What goes before each message, in the byte order of the machine.
struct [[gnu::packed]] Header {
  char start[sizeof(magic)];
  std::uint32_t length;
  std::uint32_t type;
};

posix::FileDescriptor connectToSway() {
  const char* path = std::getenv("SWAYSOCK");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (!path || std::strlen(path) >= sizeof(address.sun_path))
    return posix::FileDescriptor();
  std::memcpy(address.sun_path, path, std::strlen(path));  // The rest is zeros.
  posix::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
    socket.reset();
  return socket;
}

bool sendQuestion(int socket) {
  Header header{{}, 0, getTree};
  std::memcpy(header.start, magic, sizeof(magic));
  return send(socket, &header, sizeof(header), MSG_NOSIGNAL) == sizeof(header);
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

std::optional<QByteArray> askForTree(Deadline deadline) {
  const auto socket = connectToSway();
  Header header{};
  if (!socket || !sendQuestion(socket.get()) ||
      !receiveAll(socket.get(), reinterpret_cast<char*>(&header), sizeof(header), deadline))
    return std::nullopt;
  if (std::memcmp(header.start, magic, sizeof(magic)) != 0 || header.type != getTree ||
      header.length > longestAnswer)
    return std::nullopt;
  QByteArray answer(static_cast<qsizetype>(header.length), Qt::Uninitialized);
  if (!receiveAll(socket.get(), answer.data(), header.length, deadline))
    return std::nullopt;
  return answer;
}

std::string appIdOf(const QJsonObject& node) {
  const QString id = node["app_id"].toString();
  return (id.isEmpty() ? node["window_properties"]["class"].toString() : id).toStdString();
}

}  // namespace

std::optional<SwayTree> readSwayTree(Deadline deadline) {
  const auto answer = askForTree(deadline);
  const auto root = QJsonDocument::fromJson(answer.value_or(QByteArray())).object();
  if (root.isEmpty())
    return std::nullopt;
  SwayTree tree;
  std::vector<QJsonObject> nodes{root};
  while (!nodes.empty()) {
    const QJsonObject node = nodes.back();
    nodes.pop_back();
    const std::int64_t process = node["pid"].toInteger();
    if (process > 0)
      tree.processes.insert(process);
    if (process > 0 && node["focused"].toBool()) {
      tree.focusedProcess = process;
      tree.focusedAppId = appIdOf(node);
    }
    for (const auto* list : {"nodes", "floating_nodes"}) {
      for (const auto& child : node[QLatin1String(list)].toArray())
        nodes.push_back(child.toObject());
    }
  }
  return tree;
}

}  // namespace tavin::wayland
