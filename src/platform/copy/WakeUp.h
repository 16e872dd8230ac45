#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tavin::copy {

// Wakes the one thread that waits for it. A call that comes before the wait is not lost.
class WakeUp {
 public:
  using Clock = std::chrono::steady_clock;

  // Any thread, returns at once.
  void call() {
    {
      const std::lock_guard lock(mutex_);
      called_ = true;
    }
    condition_.notify_one();
  }
  // Returns when it was called since the last wait, or the time has come.
  void waitUntil(Clock::time_point time) {
    std::unique_lock lock(mutex_);
    condition_.wait_until(lock, time, [this] { return called_; });
    called_ = false;
  }

 private:
  std::mutex mutex_;
  std::condition_variable condition_;
  bool called_ = false;
};

}  // namespace tavin::copy
