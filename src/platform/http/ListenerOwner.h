#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace tavin::http {

// The users that own the TCP sockets which take connections to 127.0.0.1 on `port`, as the kernel's
// socket diagnosis tells them: those listening on that address or on all of them, not on others of
// this machine, which anybody may use. Empty where nothing listens; none where the kernel does not
// answer. Any thread; a question to the kernel alone, so it takes well under a millisecond.
std::optional<std::vector<uid_t>> listenerOwners(std::uint16_t port);

}  // namespace tavin::http
