#pragma once

#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/TaskInbox.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

class ClipboardServer;

// The one thread that uses a connection once it runs: asleep in poll until the compositor tells
// something, one of the files that the clipboard waits for is ready, or another thread asks it to
// do something. Not a single wake-up besides.
class EventThread {
 public:
  // `connection` must outlive it.
  explicit EventThread(Connection& connection);
  ~EventThread() { stop(); }

  // `clipboard` must outlive the running thread.
  void start(ClipboardServer& clipboard);
  // The clipboard is not called afterwards.
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
  void run(ClipboardServer& clipboard);
  int prepare(ClipboardServer& clipboard, std::vector<pollfd>& files);

  Connection& connection_;
  posix::TaskInbox inbox_;
  std::thread thread_;
};

}  // namespace tavin::wayland
