#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace tavin::desktop {

// Turns SIGTERM, SIGINT and SIGHUP into calls from the event loop, and ignores SIGPIPE. A SIGHUP
// that was ignored when the program started (nohup) stays ignored. One at a time, main thread.
//
// Handlers, not a blocked mask with a signalfd: programs that we start inherit a mask, but a
// handler ends with their exec.
class SignalWatch {
 public:
  explicit SignalWatch(std::function<void()> received);
  ~SignalWatch();
  // Until there is a watch: the signals end the program with code 0, since it holds nothing yet.
  static void endAtOnceMeanwhile();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tavin::desktop
