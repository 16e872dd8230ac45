#include "platform/http/Stranger.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tavin::test {
namespace {

int listenAnywhere(std::uint16_t& port) {
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  ::bind(listener, reinterpret_cast<sockaddr*>(&address), length);
  ::listen(listener, 8);
  ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
  port = ntohs(address.sin_port);
  return listener;
}

bool isElsewhere(Stranger::Place place) {
  return place != Stranger::Place::here && place != Stranger::Place::lendsHere;
}

// As fork. Not by unshare, which the kernel grants no process with threads, as the thread sanitizer
// gives each.
pid_t startIn(Stranger::Place place) {
  if (!isElsewhere(place))
    return ::fork();
  return static_cast<pid_t>(
      ::syscall(SYS_clone, CLONE_NEWUSER | CLONE_NEWNS | SIGCHLD, nullptr, nullptr, nullptr, 0));
}

[[noreturn]] void holdListenerUntilTold(int life) {
  pollfd end{.fd = life, .events = 0, .revents = 0};
  ::poll(&end, 1, -1);
  ::_exit(0);
}

// Says "c" when somebody connected; ends with the other end of `life`.
[[noreturn]] void listenUntilTold(Stranger::Place place, int listener, int life) {
  const pid_t pid = ::getpid();
  ::prctl(PR_SET_DUMPABLE, place == Stranger::Place::hidden ? 0 : 1);
  ::write(life, &pid, sizeof pid);
  pollfd both[] = {{.fd = life, .events = POLLIN, .revents = 0},
                   {.fd = listener, .events = POLLIN, .revents = 0}};
  while (::poll(both, 2, -1) > 0 && both[0].revents == 0) {
    ::close(::accept(listener, nullptr, nullptr));
    ::write(life, "c", 1);
  }
  ::_exit(0);
}

bool isTold(int life, pid_t& pid) {
  constexpr int milliseconds = 10'000;
  pollfd answer{.fd = life, .events = POLLIN, .revents = 0};
  return ::poll(&answer, 1, milliseconds) == 1 && ::read(life, &pid, sizeof pid) == sizeof pid;
}

}  // namespace

Stranger::Stranger(Place place) : isChild_(place == Place::ourChild) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    throw std::runtime_error("no socket pair");
  life_ = ends[0];
  const int listener = listenAnywhere(port_);
  const pid_t first = isChild_ ? startIn(place) : ::fork();
  if (first == 0) {
    ::close(ends[0]);
    const bool lends = place == Place::lends || place == Place::lendsHere;
    if (lends && ::fork() == 0)
      holdListenerUntilTold(ends[1]);
    // A grandchild is adopted by another process when its parent has ended.
    if (!isChild_ && startIn(place) != 0)
      ::_exit(0);
    listenUntilTold(place, listener, ends[1]);
  }
  ::close(listener);
  ::close(ends[1]);
  if (!isChild_)
    ::waitpid(first, nullptr, 0);
  if (!isTold(life_, pid_))
    throw std::runtime_error("no namespaces of its own for another process");
}

Stranger::~Stranger() {
  ::shutdown(life_, SHUT_RDWR);
  if (isChild_)
    ::waitpid(pid_, nullptr, 0);
  ::close(life_);
}

bool Stranger::wasConnectedTo() const {
  char letter = 0;
  return ::recv(life_, &letter, 1, MSG_DONTWAIT) == 1;
}

}  // namespace tavin::test
