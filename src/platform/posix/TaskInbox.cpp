#include "platform/posix/TaskInbox.h"

#include <sys/eventfd.h>

#include <utility>

namespace tavin::posix {

TaskInbox::TaskInbox() : wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void TaskInbox::wake() const { eventfd_write(wake_.get(), 1); }

bool TaskInbox::post(std::function<void()> task) {
  {
    const std::lock_guard lock(mutex_);
    if (!open_)
      return false;
    tasks_.push_back(std::move(task));
  }
  wake();
  return true;
}

void TaskInbox::stop() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake();
}

// Whoever wakes has said before what for: what is read after the wake-up is taken misses nothing.
bool TaskInbox::run() {
  eventfd_t ignored = 0;
  eventfd_read(wake_.get(), &ignored);
  std::deque<std::function<void()>> tasks;
  bool goesOn = false;
  {
    const std::lock_guard lock(mutex_);
    tasks.swap(tasks_);
    goesOn = !stopping_;
  }
  for (const auto& task : tasks) task();
  return goesOn;
}

void TaskInbox::close() {
  const std::lock_guard lock(mutex_);
  open_ = false;
}

bool TaskInbox::isOpen() {
  const std::lock_guard lock(mutex_);
  return open_;
}

}  // namespace tavin::posix
