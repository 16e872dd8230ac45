#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>

namespace tavin::http {

// What the kernel tells of a TCP socket.
struct LoopbackSocket {
  uid_t user = 0;
  std::uint32_t inode = 0;  // None while no process has accepted the connection.

  bool operator==(const LoopbackSocket&) const = default;
};

struct SocketAnswer {
  bool told = true;  // False where the kernel answers in no way.
  std::optional<LoopbackSocket> socket;
};

// The socket that gets what is sent from 127.0.0.1:`from` to 127.0.0.1:`to`: the other end of that
// connection, else the listener that would take it. With 0 for `from`, the listener. Any thread; a
// question to the kernel alone, so it takes well under a millisecond.
SocketAnswer socketAt(std::uint16_t to, std::uint16_t from = 0);

}  // namespace tavin::http
