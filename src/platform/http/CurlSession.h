#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <optional>

#include "platform/UrlSession.h"

namespace tavin {
class SystemLog;
}

namespace tavin::http {

// The session on libcurl. Each request has a connection of its own, because a library may send a
// POST again on a reused one; no proxy, redirect, cookie or cache takes part. A listener of another
// user is no engine: the request fails before its first byte is sent, with one log line.
class CurlSession final : public UrlSession {
 public:
  // What an answer may hold; the engine's are a few kilobytes. A larger one would take too long to
  // decode for the main thread, which waits for it.
  static constexpr std::size_t maxAnswerSize = std::size_t{1024} * 1024;

  // `log` is not owned. `user` is whose listeners count as an engine; none means ours.
  explicit CurlSession(SystemLog& log, std::optional<uid_t> user = std::nullopt);

  std::variant<UrlResponse, UrlError> dataTask(const UrlRequest& request) override;

 private:
  bool peerIsEngine(const UrlRequest& request);

  SystemLog& log_;
  const uid_t user_;
  // Each is logged once for each time it turns true.
  std::atomic<bool> foreignListener_ = false;
  std::atomic<bool> ownerUnknown_ = false;
};

}  // namespace tavin::http
