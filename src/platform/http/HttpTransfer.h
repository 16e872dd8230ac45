#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <variant>

#include "platform/UrlSession.h"

namespace tavin::http {

struct TransferLimits {
  std::chrono::steady_clock::time_point start;  // What the request's deadline counts from.
  std::size_t answerSize = 0;                   // Bytes of the body; a longer one is an error.
};

// Carries one request to `port` of the loopback interface, on a connection of its own, in the
// calling thread. `mayProceed` is asked once, between connecting and the first byte, with our end's
// port; false ends it.
std::variant<UrlResponse, UrlError> transfer(const UrlRequest& request, std::uint16_t port,
                                             const TransferLimits& limits,
                                             const std::function<bool(std::uint16_t)>& mayProceed);

}  // namespace tavin::http
