#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <functional>

namespace tavin {

// Runs the event loop until the condition holds; false after the deadline.
inline bool eventually(const std::function<bool()>& condition, int milliseconds = 10000) {
  const QDeadlineTimer deadline(milliseconds);
  while (!condition()) {
    if (deadline.hasExpired())
      return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
  }
  return true;
}

}  // namespace tavin
