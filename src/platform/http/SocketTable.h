#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/http/LoopbackSocket.h"

namespace tavin::http {

// The kernel's tables of TCP sockets, for kernels without socket diagnosis: the same answers, for
// more work. A value; reading it is the caller's only wait.
class SocketTable {
 public:
  // The text of /proc/net/tcp and of /proc/net/tcp6; lines that are none are passed over.
  SocketTable(std::string_view ipv4, std::string_view ipv6);
  // Of this process's network. Where its table cannot be read nothing is told.
  static SocketTable ofKernel();

  SocketAnswer socketAt(std::uint16_t to, std::uint16_t from = 0) const;

 private:
  // The words of an address as the kernel keeps them; an IPv4 one as IPv6 writes it.
  using Address = std::array<std::uint32_t, 4>;
  struct End {
    Address address;
    std::uint16_t port;
  };
  struct Row {
    End local;
    End remote;
    unsigned state;
    LoopbackSocket socket;
  };

  SocketTable() = default;
  void add(std::string_view text);
  void addRow(const std::string& line);
  static bool readEnd(const std::string& field, End& end);
  static bool takesLoopback(const Address& address);

  bool told_ = false;
  std::vector<Row> rows_;
};

}  // namespace tavin::http
