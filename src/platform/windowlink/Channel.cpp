#include "platform/windowlink/Channel.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <QtEndian>
#include <algorithm>
#include <cerrno>
#include <utility>

namespace tavin::windowlink {
namespace {

constexpr qsizetype headerSize = sizeof(quint32);
// So much at once: whoever sends without end does not keep the event loop.
constexpr qsizetype portion = 65536;

bool isTemporary(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

void wipe(QByteArray& bytes) {
  bytes.fill('\0');
  bytes.clear();
}

Channel::Channel(posix::FileDescriptor socket, quint32 longest,
                 std::function<void(const QByteArray&)> received, std::function<void()> ended)
    : socket_(std::move(socket)),
      longest_(longest),
      received_(std::move(received)),
      ended_(std::move(ended)),
      readable_(socket_.get(), QSocketNotifier::Read),
      writable_(socket_.get(), QSocketNotifier::Write) {
  ::fcntl(socket_.get(), F_SETFL, ::fcntl(socket_.get(), F_GETFL) | O_NONBLOCK);
  writable_.setEnabled(false);
  connect(&readable_, &QSocketNotifier::activated, this, [this] { readSome(); });
  connect(&writable_, &QSocketNotifier::activated, this, [this] { writeSome(); });
}

void Channel::send(QByteArray message) {
  if (open_) {
    char header[headerSize];
    qToBigEndian(static_cast<quint32>(message.size()), header);
    out_.append(header, headerSize).append(message);
    writeSome();
  }
  wipe(message);
}

void Channel::writeSome() {
  while (!out_.isEmpty()) {
    const ssize_t sent = ::send(socket_.get(), out_.constData(),
                                static_cast<std::size_t>(out_.size()), MSG_NOSIGNAL);
    if (sent < 0)
      break;
    std::fill_n(out_.begin(), sent, '\0');
    out_.remove(0, sent);
  }
  // That the other end has gone is told by reading.
  writable_.setEnabled(!out_.isEmpty() && isTemporary(errno));
}

void Channel::readSome() {
  char bytes[portion];
  const ssize_t count = ::recv(socket_.get(), bytes, sizeof bytes, 0);
  if (count < 0 && isTemporary(errno))
    return;
  if (count <= 0)
    return end();
  in_.append(bytes, count);
  std::fill_n(bytes, count, '\0');
  const QPointer<QObject> self(this);
  const auto received = received_;
  QByteArray message;
  while (self && takeMessage(message)) {
    received(message);
    wipe(message);
  }
}

bool Channel::takeMessage(QByteArray& message) {
  if (!open_ || in_.size() < headerSize)
    return false;
  const auto size = qFromBigEndian<quint32>(in_.constData());
  if (size > longest_) {
    end();
    return false;
  }
  const qsizetype whole = headerSize + static_cast<qsizetype>(size);
  if (in_.size() < whole)
    return false;
  message = in_.sliced(headerSize, size);
  std::fill_n(in_.begin(), whole, '\0');
  in_.remove(0, whole);
  return true;
}

void Channel::end() {
  open_ = false;
  readable_.setEnabled(false);
  writable_.setEnabled(false);
  wipe(in_);
  wipe(out_);
  const auto ended = ended_;
  ended();
}

}  // namespace tavin::windowlink
