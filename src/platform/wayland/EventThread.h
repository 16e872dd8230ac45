#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// The one thread that uses a connection once it runs: asleep in poll until the compositor tells
// something, one of the files that its parts wait for is ready, or another thread asks it to do
// something. Not a single wake-up besides.
class EventThread {
 public:
  // Something on the thread that waits for files or for a moment.
  class Part {
   public:
    virtual ~Part() = default;
    virtual void addFiles(std::vector<pollfd>& files) = 0;
    virtual std::optional<Deadline> nextDeadline() = 0;
    // Does what can be done now without waiting.
    virtual void proceed() = 0;
  };

  // `connection` must outlive it.
  explicit EventThread(Connection& connection);
  ~EventThread() { stop(); }

  // `part` must outlive the running thread. Before start().
  void add(Part& part) { parts_.push_back(&part); }
  void start();
  // No part is called afterwards.
  void stop();

  // Runs `task` on the thread and waits for its result; none when it did not end in time, or the
  // thread has ended. It may still run later, so it must hold all that it uses. Any other thread.
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

 private:
  bool post(std::function<void()> task);
  void run();
  void runTasks();
  int prepare(std::vector<pollfd>& files);

  Connection& connection_;
  std::vector<Part*> parts_;
  const posix::FileDescriptor wake_;
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
  bool alive_ = true;
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};

}  // namespace tavin::wayland
