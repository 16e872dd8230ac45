#pragma once

#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/TaskInbox.h"
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
    // Does what can be done now; waits for nobody but the compositor.
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
  // Whether the connection has broken, or it was stopped: nothing happens on it any more. Any
  // thread.
  bool hasEnded() { return !inbox_.isOpen(); }

  // Runs `task` on the thread, as TaskInbox::ask() says. Any other thread.
  template <typename T>
  std::optional<T> ask(Deadline deadline, std::function<T()> task) {
    return inbox_.ask<T>(deadline, std::move(task));
  }

 private:
  void run();
  int prepare(std::vector<pollfd>& files);

  Connection& connection_;
  std::vector<Part*> parts_;
  posix::TaskInbox inbox_;
  std::thread thread_;
};

}  // namespace tavin::wayland
