#include "platform/http/RawServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tavin::test {
namespace {

constexpr int pollMilliseconds = 20;

bool readable(int socket) {
  pollfd entry{.fd = socket, .events = POLLIN, .revents = 0};
  return ::poll(&entry, 1, pollMilliseconds) > 0;
}

}  // namespace

bool RawServer::Peer::send(const QByteArray& bytes) const {
  return ::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) ==
         bytes.size();
}

void RawServer::Peer::answer(const QByteArray& body, const QByteArray& status) const {
  send("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
       "\r\n\r\n" + body);
}

void RawServer::Peer::waitForClose() const {
  char byte = 0;
  while (!stopping_)
    if (readable(socket_) && ::recv(socket_, &byte, 1, 0) <= 0)
      return;
}

RawServer::RawServer(std::function<void(const Peer&)> serve, const char* host, quint16 port)
    : serve_(std::move(serve)), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::inet_addr(host);
  address.sin_port = htons(port);
  socklen_t length = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, generic, length) != 0 || ::listen(listener_, 8) != 0 ||
      ::getsockname(listener_, generic, &length) != 0)
    throw std::runtime_error("cannot listen on the loopback interface");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { run(); });
}

RawServer::~RawServer() {
  stopping_ = true;
  thread_.join();
  ::close(listener_);
}

void RawServer::run() {
  while (!stopping_) {
    if (!readable(listener_))
      continue;
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    const Peer peer(socket, readRequest(socket), stopping_);
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(peer.request);
    }
    serve_(peer);
    ::close(socket);
  }
}

// Head and body; what came before the peer closed, when it did.
QByteArray RawServer::readRequest(int socket) const {
  QByteArray request;
  std::array<char, 65536> buffer;
  while (!stopping_) {
    const qsizetype head = request.indexOf("\r\n\r\n");
    if (head >= 0) {
      const QByteArray fields = request.left(head + 2).toLower();
      const qsizetype at = fields.indexOf("content-length:");
      const qsizetype length =
          at < 0 ? 0 : fields.mid(at + 15, fields.indexOf("\r\n", at) - at - 15).toLongLong();
      if (request.size() >= head + 4 + length)
        return request;
    }
    if (!readable(socket))
      continue;
    const auto count = ::recv(socket, buffer.data(), buffer.size(), 0);
    if (count <= 0)
      return request;
    request.append(buffer.data(), count);
  }
  return request;
}

}  // namespace tavin::test
