#include "platform/wayland/EventThread.h"

#include <algorithm>
#include <csignal>

namespace tavin::wayland {
namespace {

// Who reads what we serve may go away in the middle.
void blockBrokenPipes() {
  sigset_t brokenPipe;
  sigemptyset(&brokenPipe);
  sigaddset(&brokenPipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

}  // namespace

EventThread::EventThread(Connection& connection) : connection_(connection) {}

void EventThread::start() {
  thread_ = std::thread([this] { run(); });
}

void EventThread::stop() {
  if (!thread_.joinable())
    return;
  inbox_.stop();
  thread_.join();
}

void EventThread::run() {
  blockBrokenPipes();
  std::vector<pollfd> files;
  bool goesOn = true;
  do {
    goesOn = inbox_.run();
    for (Part* part : parts_) part->proceed();
  } while (goesOn && connection_.turn(files, prepare(files)));
  inbox_.close();
}

// Collects what to wait for; returns for how many milliseconds, -1 for ever.
int EventThread::prepare(std::vector<pollfd>& files) {
  files.assign(1, {inbox_.file(), POLLIN, 0});
  int timeout = -1;
  for (Part* part : parts_) {
    part->addFiles(files);
    if (const auto deadline = part->nextDeadline()) {
      const int left = deadline->remainingMs();
      timeout = timeout < 0 ? left : std::min(timeout, left);
    }
  }
  return timeout;
}

}  // namespace tavin::wayland
