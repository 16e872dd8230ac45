#include "platform/http/CurlSession.h"

#include <curl/curl.h>
#include <unistd.h>

#include <QUrl>

#include "platform/SystemLog.h"
#include "platform/http/CurlTransfer.h"

namespace tavin::http {
namespace {

std::uint16_t portOf(const UrlRequest& request) {
  return static_cast<std::uint16_t>(QUrl(request.url).port(80));
}

}  // namespace

CurlSession::CurlSession(SystemLog& log, std::optional<uid_t> user)
    : log_(log), user_(user.value_or(::geteuid())), holders_(user_) {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::variant<UrlResponse, UrlError> CurlSession::dataTask(const UrlRequest& request) {
  const std::uint16_t port = portOf(request);
  // Made first: its clock runs while the listener is looked at.
  CurlTransfer transfer(request, maxAnswerSize, [this, port](std::uint16_t ownPort) {
    return isConnectedToEngine(port, ownPort);
  });
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
  return transfer.run();
}

// Another program may have taken the port since we looked.
bool CurlSession::isConnectedToEngine(std::uint16_t port, std::uint16_t ownPort) {
  SocketAnswer peer = socketAt(port, ownPort);
  if (peer.socket && peer.socket->inode == 0)  // It waits in the queue of the listener.
    peer = socketAt(port);
  return peer.socket && isEngine(*peer.socket);
}

bool CurlSession::isEngine(const LoopbackSocket& socket) {
  const auto stranger = holders_.strangerAt(socket);
  if (stranger && toldSocket_.exchange(socket.inode) != socket.inode)
    log_.write(QStringLiteral("Tavin: the engine's port is held by %1: nothing is sent there")
                   .arg(describe(*stranger, socket)));
  return !stranger;
}

QString CurlSession::describe(const SocketHolders::Stranger& stranger,
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
