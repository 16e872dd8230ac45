#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <chrono>
#include <functional>
#include <thread>

namespace tavin {

// Runs the event loop until the condition holds; false after the deadline.
inline bool eventually(const std::function<bool()>& condition, int milliseconds = 10000) {
  const QDeadlineTimer deadline(milliseconds);
  while (!condition()) {
    if (deadline.hasExpired())
      return false;
    QCoreApplication::processEvents();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace tavin
