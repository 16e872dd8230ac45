#pragma once

#include <QJsonObject>
#include <QString>
#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <thread>
#include <variant>
#include <vector>

#include "engine/EngineStatus.h"
#include "platform/UrlSession.h"

namespace tavin {

class ChildProcess;
class MainQueue;
class ProcessLauncher;
class SystemLog;
struct Bundle;

// The one way to the speech engine: requests over HTTP on the loopback interface, and the engine's
// process, which it starts, restarts a bounded number of times and asks to end.
//
// Requests block their thread and report every failure as an absent or empty result; they may be
// made from any thread. The process half belongs to the main thread.
class EngineClient : public std::enable_shared_from_this<EngineClient> {
 public:
  // Shared with the engine, which listens there by its own default: neither side is told.
  static constexpr int port = 47632;

  // What it needs of the system; not owned, must outlive the client.
  struct Services {
    UrlSession& session;
    ProcessLauncher& launcher;
    MainQueue& mainQueue;
    SystemLog& log;
    const Bundle& bundle;
  };

  // Must be created on the main thread, by std::make_shared. Starts nothing.
  explicit EngineClient(Services services);
  ~EngineClient();  // Leaves a running engine alone.

  // `timeout` in seconds without data. On the main thread it bounds the whole request.
  std::optional<EngineStatus> status(double timeout = 1.0);
  std::vector<Voice> voices(const QString& engine);
  // Sent exactly once. The reply's JSON object, or none on any failure.
  std::optional<QJsonObject> post(const QString& path, const QJsonObject& body = {});

  // Starts the engine unless something answers on the port already; that is then left alone.
  // Waits for one status request of 0.5 s.
  void startIfNeeded();
  // No restart from now on; asks the engine to end and does not wait for it.
  void shutdown();

 private:
  struct Command {
    QString python;
    QString dir;
    std::map<QString, QString> env;
  };

  UrlRequest request(const QString& path) const;
  std::variant<QByteArray, UrlError> sync(const UrlRequest& request);

  void noteFailure(const UrlError& error);

  std::optional<Command> engineCommand() const;
  void launch();
  void processExited();

  const Services services_;
  const std::thread::id mainThread_;
  const QString base_;
  std::shared_ptr<ChildProcess> process_;
  std::atomic<bool> foundRunning_ = false;  // An engine that was not started here is in use.
  std::atomic<bool> quitting_ = false;      // Only ever turns true.
  std::atomic<std::int64_t> restarts_ = 0;  // Never reset.
};

}  // namespace tavin
