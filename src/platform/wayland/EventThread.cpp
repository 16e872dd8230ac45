#include "platform/wayland/EventThread.h"

#include <csignal>

#include "platform/wayland/ClipboardServer.h"

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

void EventThread::start(ClipboardServer& clipboard) {
  thread_ = std::thread([this, &clipboard] { run(clipboard); });
}

void EventThread::stop() {
  if (!thread_.joinable())
    return;
  inbox_.stop();
  thread_.join();
}

void EventThread::run(ClipboardServer& clipboard) {
  blockBrokenPipes();
  std::vector<pollfd> files;
  bool goesOn = true;
  do {
    goesOn = inbox_.run();
    clipboard.proceed();
  } while (goesOn && connection_.turn(files, prepare(clipboard, files)));
  inbox_.close();
}

// Collects what to wait for; returns for how many milliseconds, -1 for ever.
int EventThread::prepare(ClipboardServer& clipboard, std::vector<pollfd>& files) {
  files.assign(1, {inbox_.file(), POLLIN, 0});
  clipboard.addFiles(files);
  const auto deadline = clipboard.nextDeadline();
  return deadline ? deadline->remainingMs() : -1;
}

}  // namespace tavin::wayland
