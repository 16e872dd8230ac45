#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace tavin {

// The users that own the TCP sockets listening on `port` of this machine, as the kernel's socket
// diagnosis tells them. Empty where nothing listens; none where the kernel does not answer. Any
// thread; a question to the kernel alone, so it takes well under a millisecond.
std::optional<std::vector<uid_t>> listenerOwners(std::uint16_t port);

}  // namespace tavin
