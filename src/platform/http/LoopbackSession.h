#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/UrlSession.h"
#include "platform/http/LoopbackSocket.h"
#include "platform/http/SocketHolders.h"

namespace tavin {
class SystemLog;
}

namespace tavin::http {

// The session over the loopback interface. Each request has a connection of its own, so that none
// is sent twice; no proxy, redirect, cookie or cache takes part. A listener that is not ours
// (SocketHolders) is no engine: it is not even connected to, and one log line tells who it is.
class LoopbackSession final : public UrlSession {
 public:
  // What an answer may hold; the engine's are a few kilobytes. A larger one would take too long to
  // decode for the main thread, which waits for it.
  static constexpr std::size_t maxAnswerSize = std::size_t{1024} * 1024;

  // `log` is not owned. `user` is whose listeners count as an engine; none means ours.
  explicit LoopbackSession(SystemLog& log, std::optional<uid_t> user = std::nullopt);

  std::variant<UrlResponse, UrlError> dataTask(const UrlRequest& request) override;

 private:
  bool isEngine(const LoopbackSocket& socket);
  bool isConnectedToEngine(std::uint16_t port, std::uint16_t ownPort);
  QString describe(const SocketHolders::Stranger& stranger, const LoopbackSocket& socket) const;

  SystemLog& log_;
  const uid_t user_;
  SocketHolders holders_;
  std::atomic<std::uint32_t> toldSocket_ = 0;  // The stranger's that was logged last.
  std::atomic<bool> toldSilence_ = false;
};

}  // namespace tavin::http
