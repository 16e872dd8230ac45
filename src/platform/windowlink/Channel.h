#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <functional>

#include "platform/posix/FileDescriptor.h"

namespace tavin::windowlink {

// Messages in order over one end of a socket pair, from the event loop of the thread that made it.
// Waits for nobody: what the other end does not take at once waits in memory.
class Channel : private QObject {
 public:
  // `received` is called with each message of at most `longest` bytes; `ended` once, when the other
  // end has closed or sends anything else, and nothing after it. Either may destroy the channel.
  Channel(posix::FileDescriptor socket, quint32 longest,
          std::function<void(const QByteArray&)> received, std::function<void()> ended);

  void send(QByteArray message);

 private:
  void readSome();
  bool takeMessage(QByteArray& message);
  void writeSome();
  void end();

  const posix::FileDescriptor socket_;
  const quint32 longest_;
  const std::function<void(const QByteArray&)> received_;
  const std::function<void()> ended_;
  QSocketNotifier readable_;
  QSocketNotifier writable_;
  QByteArray in_;
  QByteArray out_;
  bool open_ = true;
};

// Leaves zeros where the bytes were: what is typed travels through here.
void wipe(QByteArray& bytes);

}  // namespace tavin::windowlink
