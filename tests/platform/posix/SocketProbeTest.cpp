#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <thread>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/SocketProbe.h"

namespace tavin::posix {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// A server whose queue one connection fills.
class SocketProbeTest : public testing::Test {
 protected:
  SocketProbeTest() {
    address_.sun_family = AF_UNIX;
    std::memcpy(address_.sun_path, name_.data(), name_.size());
    EXPECT_EQ(bind(server_.get(), address(), length()), 0);
    EXPECT_EQ(listen(server_.get(), 0), 0);
    const timeval limit{5, 0};  // For accepting.
    setsockopt(server_.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  }
  FileDescriptor connected() const {
    FileDescriptor client(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (connect(client.get(), address(), length()) != 0)
      client.reset();
    return client;
  }
  FileDescriptor accepted() const {
    return FileDescriptor(accept4(server_.get(), nullptr, nullptr, SOCK_CLOEXEC));
  }
  bool answersWithin(double seconds) const {
    return socketAnswers(name_, "hello", Deadline::in(seconds));
  }

 private:
  const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&address_); }
  socklen_t length() const {
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name_.size());
  }

  const std::string name_ = std::string(1, '\0') + "tavin-probe-" + std::to_string(getpid());
  sockaddr_un address_{};
  const FileDescriptor server_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST_F(SocketProbeTest, AServerThatTakesItsTimeWithAFullQueueIsWaitedFor) {
  const FileDescriptor waiting = connected();
  ASSERT_TRUE(waiting);
  ASSERT_FALSE(connected()) << "the queue is full";
  std::thread server([this] {
    std::this_thread::sleep_for(100ms);
    const FileDescriptor first = accepted();
    const FileDescriptor second = accepted();
    EXPECT_EQ(send(second.get(), "hi", 2, MSG_NOSIGNAL), 2);
    char greeting[16];
    EXPECT_EQ(recv(second.get(), greeting, sizeof greeting, 0), 5);
  });
  EXPECT_TRUE(answersWithin(10));
  server.join();
}

TEST_F(SocketProbeTest, AQueueThatStaysFullIsGivenUpAtTheDeadline) {
  const FileDescriptor waiting = connected();
  ASSERT_TRUE(waiting);
  const auto start = Clock::now();
  EXPECT_FALSE(answersWithin(0.2));
  EXPECT_GE(Clock::now() - start, 200ms);
  EXPECT_LT(Clock::now() - start, 2s);
}

TEST_F(SocketProbeTest, AServerThatTakesTheConnectionAndIsSilentIsGivenUpAtTheDeadline) {
  const auto start = Clock::now();
  EXPECT_FALSE(answersWithin(0.2));
  EXPECT_GE(Clock::now() - start, 200ms);
  EXPECT_LT(Clock::now() - start, 2s);
}

TEST(NoSocketTest, WhereNobodyListensTheAnswerIsNoAtOnce) {
  const auto start = Clock::now();
  EXPECT_FALSE(socketAnswers("/nowhere/socket", "hello", Deadline::in(10)));
  EXPECT_LT(Clock::now() - start, 2s);
}

}  // namespace
}  // namespace tavin::posix
