#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/Deadline.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {

// Tasks for one thread that sleeps in poll, and its end. Any thread may post, ask and stop; running
// and closing are that thread's.
class TaskInbox {
 public:
  TaskInbox();

  // Readable while there is something to do.
  int file() const { return wake_.get(); }
  // False once it is closed.
  bool post(std::function<void()> task);
  // Waits for the task's result; none when it did not end in time, or the thread has ended. It may
  // still run later, so it must hold all that it uses. Not from the thread itself.
  template <typename T>
  std::optional<T> ask(Deadline deadline, std::function<T()> task) {
    const auto promise = std::make_shared<std::promise<T>>();
    auto result = promise->get_future();
    const bool taken = post([promise, task = std::move(task)] { promise->set_value(task()); });
    if (!taken || result.wait_for(std::chrono::milliseconds(deadline.remainingMs())) !=
                      std::future_status::ready)
      return std::nullopt;
    return result.get();
  }

  // From now on run() answers false, and a thread that sleeps wakes up for it.
  void stop();
  // Runs the tasks that are there, before each sleep. False once the thread is to end.
  bool run();
  void close();
  // Whether tasks are taken. Any thread.
  bool isOpen();

 private:
  void wake() const;

  const FileDescriptor wake_;
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
  bool open_ = true;
  bool stopping_ = false;
};

}  // namespace tavin::posix
