#include "platform/http/Stranger.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tavin::test {
namespace {

struct Greeting {
  pid_t pid = -1;
  std::uint16_t port = 0;
};

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

bool goElsewhere(Stranger::Place place) {
  const bool stays = place == Stranger::Place::here || place == Stranger::Place::lendsHere;
  return stays || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
}

// Says "c" when somebody connected; ends with the other end of `life`.
[[noreturn]] void listenUntilTold(Stranger::Place place, int life) {
  Greeting greeting{.pid = ::getpid(), .port = 0};
  const int listener = listenAnywhere(greeting.port);
  const bool lends = place == Stranger::Place::lends || place == Stranger::Place::lendsHere;
  if (lends && ::fork() == 0) {
    pollfd end{.fd = life, .events = 0, .revents = 0};
    ::poll(&end, 1, -1);
    ::_exit(0);
  }
  if (!goElsewhere(place))
    ::_exit(1);
  ::prctl(PR_SET_DUMPABLE, place == Stranger::Place::hidden ? 0 : 1);
  ::write(life, &greeting, sizeof greeting);
  pollfd both[] = {{.fd = life, .events = POLLIN, .revents = 0},
                   {.fd = listener, .events = POLLIN, .revents = 0}};
  while (::poll(both, 2, -1) > 0 && both[0].revents == 0) {
    ::close(::accept(listener, nullptr, nullptr));
    ::write(life, "c", 1);
  }
  ::_exit(0);
}

}  // namespace

Stranger::Stranger(Place place) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    throw std::runtime_error("no socket pair");
  life_ = ends[0];
  first_ = ::fork();
  if (first_ == 0) {
    ::close(ends[0]);
    // A grandchild is adopted by another process when its parent has ended.
    if (place != Place::ourChild && ::fork() != 0)
      ::_exit(0);
    listenUntilTold(place, ends[1]);
  }
  ::close(ends[1]);
  if (place != Place::ourChild)
    ::waitpid(first_, nullptr, 0);
  Greeting greeting;
  if (::read(life_, &greeting, sizeof greeting) != sizeof greeting)
    throw std::runtime_error("no namespaces of its own for another process");
  pid_ = greeting.pid;
  port_ = greeting.port;
}

Stranger::~Stranger() {
  ::shutdown(life_, SHUT_RDWR);
  if (first_ == pid_)
    ::waitpid(pid_, nullptr, 0);
  ::close(life_);
}

bool Stranger::wasConnectedTo() const {
  char letter = 0;
  return ::recv(life_, &letter, 1, MSG_DONTWAIT) == 1;
}

}  // namespace tavin::test
