#include "platform/desktop/SignalWatch.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

namespace tavin::desktop {
namespace {

constexpr int watched[] = {SIGTERM, SIGINT, SIGHUP};

// Stays open for good: a handler may be running when the watch goes.
int wakeUp() {
  static const int fd = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  return fd;
}

void onSignal(int) {
  const int savedError = errno;
  const std::uint64_t one = 1;
  // It fails only when wake-ups wait to be read already.
  [[maybe_unused]] const ssize_t written = write(wakeUp(), &one, sizeof one);
  errno = savedError;
}

void endAtOnce(int) { _exit(0); }

void setHandler(int number, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

bool isIgnored(int number) {
  struct sigaction current = {};
  return sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

void handleWatched(void (*handler)(int)) {
  for (const int number : watched) {
    if (number != SIGHUP || !isIgnored(number))
      setHandler(number, handler);
  }
}

}  // namespace

SignalWatch::SignalWatch(std::function<void()> received)
    : notifier_(std::make_unique<QSocketNotifier>(wakeUp(), QSocketNotifier::Read)) {
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [received = std::move(received)] {
                     std::uint64_t count = 0;
                     if (read(wakeUp(), &count, sizeof count) == sizeof count)
                       received();
                   });
  setHandler(SIGPIPE, SIG_IGN);
  handleWatched(onSignal);
}

void SignalWatch::endAtOnceMeanwhile() { handleWatched(endAtOnce); }

SignalWatch::~SignalWatch() {
  for (const int number : watched) {
    if (!isIgnored(number))
      setHandler(number, SIG_DFL);
  }
}

}  // namespace tavin::desktop
