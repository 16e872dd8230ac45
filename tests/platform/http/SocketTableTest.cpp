#include <gmock/gmock.h>

#include "platform/http/RawServer.h"
#include "platform/http/SocketTable.h"

namespace tavin::test {
namespace {

using http::LoopbackSocket;
using http::SocketTable;

constexpr std::uint16_t port = 0xBA10;
constexpr const char* title =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode\n";

// A line as the kernel of a little-endian machine writes it.
std::string row(const std::string& local, const std::string& remote, const std::string& state,
                const std::string& user, const std::string& inode) {
  return "   0: " + local + " " + remote + " " + state +
         " 00000000:00000000 00:00000000 00000000 " + user + "        0 " + inode +
         " 1 0000000000000000 100 0 0 10 0\n";
}

const std::string anybody = "00000000:0000";
const std::string anybody6 = "00000000000000000000000000000000:0000";

std::optional<LoopbackSocket> found(const std::string& ipv4, const std::string& ipv6 = "",
                                    std::uint16_t from = 0) {
  return SocketTable(title + ipv4, title + ipv6).socketAt(port, from).socket;
}

TEST(SocketTableTest, ListenerOnTheLoopbackAddressOrOnAllIsFound) {
  EXPECT_EQ(found(row("0100007F:BA10", anybody, "0A", "1000", "77")), (LoopbackSocket{1000, 77}));
  EXPECT_EQ(found(row("00000000:BA10", anybody, "0A", "0", "78")), (LoopbackSocket{0, 78}));
}

TEST(SocketTableTest, OtherPortsAddressesAndStatesAreNone) {
  EXPECT_FALSE(found(row("0100007F:BA11", anybody, "0A", "1000", "77")));
  EXPECT_FALSE(found(row("0200007F:BA10", anybody, "0A", "1000", "77")));
  EXPECT_FALSE(found(row("0100007F:BA10", "0100007F:1234", "01", "1000", "77")));
}

TEST(SocketTableTest, OtherEndOfAConnectionComesBeforeTheListener) {
  const std::string both = row("0100007F:BA10", anybody, "0A", "1000", "77") +
                           row("0100007F:BA10", "0100007F:1234", "01", "1001", "79");
  EXPECT_EQ(found(both, "", 0x1234), (LoopbackSocket{1001, 79}));
  EXPECT_EQ(found(both, "", 0x1235), (LoopbackSocket{1000, 77}));
}

TEST(SocketTableTest, Ipv6ListenerOnAllAddressesCountsWhereIpv4HasNone) {
  const std::string all = row("00000000000000000000000000000000:BA10", anybody6, "0A", "1", "80");
  EXPECT_EQ(found("", all), (LoopbackSocket{1, 80}));
  EXPECT_EQ(found(row("0100007F:BA10", anybody, "0A", "2", "81"), all), (LoopbackSocket{2, 81}));
}

TEST(SocketTableTest, Ipv4AddressAsIpv6WritesItCounts) {
  const std::string mapped = "0000000000000000FFFF00000100007F:";
  EXPECT_EQ(found("", row(mapped + "BA10", anybody6, "0A", "1", "82")), (LoopbackSocket{1, 82}));
  EXPECT_EQ(found("", row(mapped + "BA10", mapped + "1234", "01", "1", "83"), 0x1234),
            (LoopbackSocket{1, 83}));
  EXPECT_FALSE(found("", row("00000000000000000000000001000000:BA10", anybody6, "0A", "1", "84")));
}

TEST(SocketTableTest, LinesThatAreNoneArePassedOver) {
  EXPECT_EQ(found("\n  :::\n" + row("0100007F:", anybody, "0A", "1", "2") +
                  row("0100007F:BA10", anybody, "zz", "1", "2") +
                  row("0100007F:BA10", anybody, "0A", "-1", "2") +
                  row("0100007F:BA10", anybody, "0A", "1000", "77")),
            (LoopbackSocket{1000, 77}));
}

TEST(SocketTableTest, NothingIsToldWithoutATable) {
  EXPECT_FALSE(SocketTable("", "").socketAt(port).told);
}

TEST(SocketTableTest, KernelsOwnTableGivesTheAnswersOfItsDiagnosis) {
  const RawServer server([](const auto&) {});
  EXPECT_EQ(SocketTable::ofKernel().socketAt(server.port()).socket,
            http::socketAt(server.port()).socket);
  EXPECT_TRUE(http::socketAt(server.port()).socket);
}

}  // namespace
}  // namespace tavin::test
