#pragma once

#include <sys/socket.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

#include "platform/posix/FileDescriptor.h"

namespace tavin::test {

struct SocketPair {
  SocketPair() {
    int ends[2] = {-1, -1};
    ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
    one = posix::FileDescriptor(ends[0]);
    other = posix::FileDescriptor(ends[1]);
  }
  posix::FileDescriptor one;
  posix::FileDescriptor other;
};

// Runs the event loop until the condition holds; false when it does not within ten seconds.
template <typename Condition>
bool waitUntil(Condition condition) {
  QElapsedTimer waited;
  waited.start();
  while (!condition()) {
    if (waited.elapsed() > 10'000)
      return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(1);
  }
  return true;
}

// An event loop for the test's length.
class WithEventLoop {
  int count_ = 1;
  char name_[16] = "windowlink_test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
};

}  // namespace tavin::test
