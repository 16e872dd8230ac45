#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "platform/http/RawServer.h"
#include "platform/http/SocketHolders.h"
#include "platform/http/Stranger.h"

namespace tavin::test {
namespace {

using http::LoopbackSocket;
using http::socketAt;
using http::SocketHolders;
using Place = Stranger::Place;

class SocketHoldersTest : public ::testing::Test {
 protected:
  static LoopbackSocket listener(std::uint16_t port) { return socketAt(port).socket.value(); }
  bool isOurs(const Stranger& process) { return !holders.strangerAt(listener(process.port())); }

  SocketHolders holders{::geteuid()};
};

TEST_F(SocketHoldersTest, ProgramInOurNamespacesIsOurs) {
  EXPECT_TRUE(isOurs(Stranger(Place::here)));
}

TEST_F(SocketHoldersTest, ProgramInOtherNamespacesIsAStrangerWithNameAndNumber) {
  const Stranger process(Place::otherNamespaces);
  const auto stranger = holders.strangerAt(listener(process.port()));
  ASSERT_TRUE(stranger);
  EXPECT_EQ(stranger->pid, process.pid());
  EXPECT_EQ(stranger->name, "http_session_te");
}

TEST_F(SocketHoldersTest, ProgramThatHidesItsFilesIsAStranger) {
  EXPECT_FALSE(isOurs(Stranger(Place::hidden)));
}

TEST_F(SocketHoldersTest, OurChildIsOursWhereverItIs) {
  EXPECT_TRUE(isOurs(Stranger(Place::ourChild)));
}

TEST_F(SocketHoldersTest, ListenerThatAStrangerLentToOursIsAStrangers) {
  EXPECT_FALSE(isOurs(Stranger(Place::lends)));
  EXPECT_TRUE(isOurs(Stranger(Place::lendsHere)));
}

TEST_F(SocketHoldersTest, HolderThatWasFoundIsFoundAgainAndItsFollowerIsNotTakenForIt) {
  std::uint16_t port = 0;
  {
    const Stranger process(Place::here);
    port = process.port();
    EXPECT_TRUE(isOurs(process));
    EXPECT_TRUE(isOurs(process));
  }
  for (int i = 0; i < 1000 && socketAt(port).socket; ++i) ::usleep(1000);
  EXPECT_FALSE(socketAt(port).socket);
  EXPECT_FALSE(isOurs(Stranger(Place::otherNamespaces)));
  EXPECT_TRUE(isOurs(Stranger(Place::here)));
}

TEST_F(SocketHoldersTest, SocketOfAnotherUserAndOneThatNobodyHoldsAreStrangers) {
  const Stranger process(Place::here);
  LoopbackSocket socket = listener(process.port());
  socket.user += 1;
  EXPECT_TRUE(holders.strangerAt(socket));
  EXPECT_TRUE(holders.strangerAt({.user = ::geteuid(), .inode = 0}));
  const auto stranger = holders.strangerAt({.user = ::geteuid(), .inode = 1});
  ASSERT_TRUE(stranger);
  EXPECT_EQ(stranger->pid, 0);
}

TEST_F(SocketHoldersTest, HolderThatIsKnownIsRecognisedInLessThanATenthOfAMillisecond) {
  const Stranger process(Place::here);
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(isOurs(process));
  RecordProperty("search_us", static_cast<int>((std::chrono::steady_clock::now() - begin) /
                                               std::chrono::microseconds(1)));
  std::vector<std::chrono::nanoseconds> times;
  for (int i = 0; i < 1000; ++i) {
    const auto start = std::chrono::steady_clock::now();
    const bool ours = isOurs(process);
    times.push_back(std::chrono::steady_clock::now() - start);
    ASSERT_TRUE(ours);
  }
  std::nth_element(times.begin(), times.begin() + 500, times.end());
  RecordProperty("median_ns", static_cast<int>(times[500].count()));
  EXPECT_LT(times[500], std::chrono::microseconds(100));
}

TEST(LoopbackSocketTest, ListenerIsTold) {
  const RawServer server([](const auto&) {});
  EXPECT_EQ(socketAt(server.port()).socket->user, ::geteuid());
  EXPECT_NE(socketAt(server.port()).socket->inode, 0U);
}

TEST(LoopbackSocketTest, ListenerOnAnotherAddressOfTheMachineDoesNotCount) {
  const RawServer elsewhere([](const auto&) {}, "127.0.0.2");
  EXPECT_FALSE(socketAt(elsewhere.port()).socket);
}

TEST(LoopbackSocketTest, ListenerOnAllAddressesCounts) {
  const RawServer everywhere([](const auto&) {}, "0.0.0.0");
  EXPECT_TRUE(socketAt(everywhere.port()).socket);
}

TEST(LoopbackSocketTest, PortWithoutAListenerHasNone) {
  quint16 port = 0;
  {
    const RawServer server([](const auto&) {});
    port = server.port();
  }
  EXPECT_TRUE(socketAt(port).told);
  EXPECT_FALSE(socketAt(port).socket);
}

TEST(LoopbackSocketTest, Ipv6ListenerCountsOnlyWhereItTakesIpv4Too) {
  for (const int ipv6Only : {0, 1}) {
    const int listener = ::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ::setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, &ipv6Only, sizeof ipv6Only);
    ASSERT_EQ(::listen(listener, 1), 0);
    sockaddr_in6 address{};
    socklen_t length = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    EXPECT_EQ(socketAt(ntohs(address.sin6_port)).socket.has_value(), ipv6Only == 0);
    ::close(listener);
  }
}

}  // namespace
}  // namespace tavin::test
