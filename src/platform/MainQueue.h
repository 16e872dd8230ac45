#pragma once

#include <functional>
#include <memory>

#include "platform/Executor.h"

namespace tavin {

// A repeating timer on the main thread. Main thread only.
class Timer {
 public:
  virtual ~Timer() = default;
  // The block is not called again; calling it twice is harmless.
  virtual void invalidate() = 0;
};

// The main thread's event loop as a queue. `async` may be called from any thread; tasks run on the
// main thread, one after the other, in the order in which they were submitted.
class MainQueue : public Executor {
 public:
  // Runs `task` on the main thread after `seconds`. Any thread.
  virtual void asyncAfter(double seconds, std::function<void()> task) = 0;
  // Calls `block` every `seconds`, first after one interval, until the timer it is handed is
  // invalidated. Main thread only. The loop keeps a valid timer alive.
  virtual std::shared_ptr<Timer> scheduledTimer(
      double seconds, std::function<void(const std::shared_ptr<Timer>&)> block) = 0;
};

}  // namespace tavin
