#pragma once

#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/TaskInbox.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// The one thread that uses a connection once it runs: asleep in poll until the compositor tells
// something, one of the files that its server waits for is ready, or another thread asks it to do
// something. Not a single wake-up besides.
class EventThread {
 public:
  // What waits on the thread for files or for a moment.
  class Server {
   public:
    virtual ~Server() = default;
    virtual void addFiles(std::vector<pollfd>& files) = 0;
    virtual std::optional<Deadline> nextDeadline() = 0;
    // Does what can be done now; waits for nobody but the compositor.
    virtual void proceed() = 0;
  };

  // `connection` must outlive it.
  explicit EventThread(Connection& connection);
  ~EventThread() { stop(); }

  // `server` must outlive the running thread.
  void start(Server& server);
  // The server is not called afterwards.
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
  void run(Server& server);
  int prepare(Server& server, std::vector<pollfd>& files);

  Connection& connection_;
  posix::TaskInbox inbox_;
  std::thread thread_;
};

}  // namespace tavin::wayland
