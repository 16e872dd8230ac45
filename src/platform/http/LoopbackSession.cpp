#include "platform/http/LoopbackSession.h"

#include <unistd.h>

#include <QUrl>

#include "platform/SystemLog.h"
#include "platform/http/HttpTransfer.h"

namespace tavin::http {
namespace {

std::uint16_t portOf(const UrlRequest& request) {
  return static_cast<std::uint16_t>(QUrl(request.url).port(80));
}

}  // namespace

LoopbackSession::LoopbackSession(SystemLog& log, std::optional<uid_t> user)
    : log_(log), user_(user.value_or(::geteuid())), holders_(user_) {}

std::variant<UrlResponse, UrlError> LoopbackSession::dataTask(const UrlRequest& request) {
  const std::uint16_t port = portOf(request);
  // The clock runs while the listener is looked at.
  const TransferLimits limits{std::chrono::steady_clock::now(), maxAnswerSize};
  const SocketAnswer listener = socketAt(port);
  if (!listener.told) {
    if (!toldSilence_.exchange(true))
      log_.write(QStringLiteral("Tavin: the kernel does not tell who has the engine's port"));
    return UrlError{};
  }
  // A connection to a port on which nobody listens may get that very port for its own end: then it
  // meets itself, and for a minute no engine can listen there.
  if (!listener.socket)
    return UrlError{UrlError::cannotConnectToHost};
  if (!isEngine(*listener.socket))
    return UrlError{};
  return transfer(request, port, limits, [this, port](std::uint16_t ownPort) {
    return isConnectedToEngine(port, ownPort);
  });
}

// Another program may have taken the port since we looked.
bool LoopbackSession::isConnectedToEngine(std::uint16_t port, std::uint16_t ownPort) {
  SocketAnswer peer = socketAt(port, ownPort);
  if (peer.socket && peer.socket->inode == 0)  // It waits in the queue of the listener.
    peer = socketAt(port);
  return peer.socket && isEngine(*peer.socket);
}

bool LoopbackSession::isEngine(const LoopbackSocket& socket) {
  const auto stranger = holders_.strangerAt(socket);
  if (stranger && toldSocket_.exchange(socket.inode) != socket.inode)
    log_.write(QStringLiteral("Tavin: the engine's port is held by %1: nothing is sent there")
                   .arg(describe(*stranger, socket)));
  return !stranger;
}

QString LoopbackSession::describe(const SocketHolders::Stranger& stranger,
                                  const LoopbackSocket& socket) const {
  if (socket.user != user_)
    return QStringLiteral("another user's program");
  if (stranger.pid == 0)
    return QStringLiteral("a program that does not show itself");
  return QStringLiteral("a sandboxed program, “%1” (process %2)")
      .arg(QString::fromStdString(stranger.name))
      .arg(stranger.pid);
}

}  // namespace tavin::http
