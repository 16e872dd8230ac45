#include "platform/http/SocketTable.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tavin::http {
namespace {

// TCP_LISTEN of the kernel's state numbers.
constexpr unsigned listenState = 10;

template <typename Number>
bool parse(std::string_view text, Number& number, int base) {
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return end.ec == std::errc() && end.ptr == text.data() + text.size();
}

std::string contents(const char* path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

SocketTable::SocketTable(std::string_view ipv4, std::string_view ipv6) : told_(!ipv4.empty()) {
  add(ipv4);
  add(ipv6);
}

SocketTable SocketTable::ofKernel() {
  return {contents("/proc/self/net/tcp"), contents("/proc/self/net/tcp6")};
}

void SocketTable::add(std::string_view text) {
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) addRow(line);
}

void SocketTable::addRow(const std::string& line) {
  std::istringstream fields(line);
  std::string number, local, remote, state, queues, timer, retries, user, timeout, inode;
  fields >> number >> local >> remote >> state >> queues >> timer >> retries >> user >> timeout >>
      inode;
  Row row{};
  if (readEnd(local, row.local) && readEnd(remote, row.remote) && parse(state, row.state, 16) &&
      parse(user, row.socket.user, 10) && parse(inode, row.socket.inode, 10))
    rows_.push_back(row);
}

// An address is written as native numbers of what stands in memory in the network's order.
bool SocketTable::readEnd(const std::string& field, End& end) {
  const auto colon = field.find(':');
  if ((colon != 8 && colon != 32) ||
      !parse(std::string_view(field).substr(colon + 1), end.port, 16))
    return false;
  end.address = {0, 0, htonl(0xffff), 0};
  if (colon == 8)
    return parse(std::string_view(field).substr(0, 8), end.address[3], 16);
  for (std::size_t word = 0; word < 4; ++word)
    if (!parse(std::string_view(field).substr(word * 8, 8), end.address[word], 16))
      return false;
  return true;
}

bool SocketTable::takesLoopback(const Address& address) {
  const Address any4{0, 0, htonl(0xffff), htonl(INADDR_ANY)};
  const Address loopback{0, 0, htonl(0xffff), htonl(INADDR_LOOPBACK)};
  return address == loopback || address == any4;
}

SocketAnswer SocketTable::socketAt(std::uint16_t to, std::uint16_t from) const {
  if (!told_)
    return {.told = false, .socket = {}};
  const Address any6{};
  const LoopbackSocket* listener = nullptr;
  const LoopbackSocket* listener6 = nullptr;
  for (const Row& row : rows_) {
    if (row.local.port != to)
      continue;
    if (row.state != listenState) {
      if (row.remote.port == from && takesLoopback(row.local.address) &&
          takesLoopback(row.remote.address))
        return {.socket = row.socket};
    } else if (takesLoopback(row.local.address)) {
      listener = &row.socket;
    } else if (row.local.address == any6) {
      listener6 = &row.socket;
    }
  }
  // The table does not say which listeners are for IPv6 alone. One on all its addresses that takes
  // IPv4's as well tolerates none beside it.
  listener = listener ? listener : listener6;
  return {.socket = listener ? std::optional(*listener) : std::nullopt};
}

}  // namespace tavin::http
