#include "platform/wayland/EventThread.h"

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

void EventThread::start(Server& server) {
  thread_ = std::thread([this, &server] { run(server); });
}

void EventThread::stop() {
  if (!thread_.joinable())
    return;
  inbox_.stop();
  thread_.join();
}

void EventThread::run(Server& server) {
  blockBrokenPipes();
  std::vector<pollfd> files;
  bool goesOn = true;
  do {
    goesOn = inbox_.run();
    server.proceed();
  } while (goesOn && connection_.turn(files, prepare(server, files)));
  inbox_.close();
}

// Collects what to wait for; returns for how many milliseconds, -1 for ever.
int EventThread::prepare(Server& server, std::vector<pollfd>& files) {
  files.assign(1, {inbox_.file(), POLLIN, 0});
  server.addFiles(files);
  const auto deadline = server.nextDeadline();
  return deadline ? deadline->remainingMs() : -1;
}

}  // namespace tavin::wayland
