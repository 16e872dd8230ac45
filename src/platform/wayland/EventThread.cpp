#include "platform/wayland/EventThread.h"

#include <sys/eventfd.h>

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

EventThread::EventThread(Connection& connection)
    : connection_(connection), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void EventThread::start() {
  thread_ = std::thread([this] { run(); });
}

void EventThread::stop() {
  if (!thread_.joinable())
    return;
  stopping_ = true;
  eventfd_write(wake_.get(), 1);
  thread_.join();
}

bool EventThread::post(std::function<void()> task) {
  {
    const std::lock_guard lock(mutex_);
    if (!alive_)
      return false;
    tasks_.push_back(std::move(task));
  }
  eventfd_write(wake_.get(), 1);
  return true;
}

void EventThread::run() {
  blockBrokenPipes();
  std::vector<pollfd> files;
  do {
    runTasks();
    for (Part* part : parts_) part->proceed();
  } while (!stopping_ && connection_.turn(files, prepare(files)));
  const std::lock_guard lock(mutex_);
  alive_ = false;
}

void EventThread::runTasks() {
  eventfd_t ignored = 0;
  eventfd_read(wake_.get(), &ignored);
  std::deque<std::function<void()>> tasks;
  {
    const std::lock_guard lock(mutex_);
    tasks.swap(tasks_);
  }
  for (const auto& task : tasks) task();
}

// Collects what to wait for; returns for how many milliseconds, -1 for ever.
int EventThread::prepare(std::vector<pollfd>& files) {
  files.assign(1, {wake_.get(), POLLIN, 0});
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
