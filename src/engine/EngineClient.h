#pragma once

#include <QJsonObject>
#include <QString>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "engine/EngineStatus.h"
#include "engine/EngineSupervisor.h"
#include "platform/UrlSession.h"

namespace tavin {

// What a request's limit bounds.
enum class TimeLimit {
  idle,   // The time without data.
  total,  // The whole request: for callers who cannot wait for an answer that trickles in.
};

// The one way to the speech engine: requests over HTTP on the loopback interface, and the engine's
// process by way of its supervisor.
//
// Requests block their thread and report every failure as an absent or empty result; they may be
// made from any thread. What concerns the process belongs to the main thread.
class EngineClient {
 public:
  // Shared with the engine, which listens there by its own default: neither side is told.
  static constexpr int port = 47632;

  // What it needs of the system; not owned, must outlive the client.
  struct Services {
    UrlSession& session;
    EngineSupervisor::Services process;
  };

  // Starts nothing. A running engine outlives it.
  explicit EngineClient(Services services);

  // `timeout` in seconds.
  std::optional<EngineStatus> status(double timeout = 1.0, TimeLimit limit = TimeLimit::idle);
  std::vector<Voice> voices(const QString& engine);
  // Sent exactly once. The reply's JSON object, or none on any failure.
  std::optional<QJsonObject> post(const QString& path, const QJsonObject& body = {});

  // Starts the engine unless something answers on the port already; that is then left alone.
  // Waits for one status request of 0.5 s.
  void startIfNeeded();
  // As EngineSupervisor::shutdown().
  void shutdown() { supervisor_->shutdown(); }

 private:
  UrlRequest request(const QString& path) const;
  std::variant<QByteArray, UrlError> sync(const UrlRequest& request);

  UrlSession& session_;
  const std::shared_ptr<EngineSupervisor> supervisor_;
  const QString base_;
};

}  // namespace tavin
