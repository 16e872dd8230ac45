#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>

#include "platform/Executor.h"

namespace tavin {

// Threads that run submitted tasks: one thread makes it a serial queue, more make it a pool.
// Threads start when there is work for them and then sleep until there is more. Built on the
// standard library's primitives alone so that the thread sanitizer sees every hand-over.
//
// Destruction drops what has not started and waits for nothing: a task that hangs keeps its own
// thread until the process ends.
class ThreadQueue final : public Executor {
 public:
  explicit ThreadQueue(std::size_t maxThreads);
  ~ThreadQueue() override;

  void async(std::function<void()> task) override;

 private:
  struct State;
  static void run(const std::shared_ptr<State>& state);
  void startThread();

  std::shared_ptr<State> state_;
};

}  // namespace tavin
