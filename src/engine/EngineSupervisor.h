#pragma once

#include <QString>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace tavin {

class ChildProcess;
class MainQueue;
class ProcessLauncher;
class SystemLog;
struct Bundle;

// The engine's process: starts it, restarts it a bounded number of times and asks it to end.
// Belongs to the main thread.
class EngineSupervisor : public std::enable_shared_from_this<EngineSupervisor> {
 public:
  // What it needs of the system; not owned, must outlive the supervisor.
  struct Services {
    ProcessLauncher& launcher;
    MainQueue& mainQueue;
    SystemLog& log;
    const Bundle& bundle;
  };

  // By std::make_shared. Starts nothing.
  explicit EngineSupervisor(Services services) : services_(services) {}

  // A failure is logged.
  void launch();
  // An engine that was not started here answers.
  void noteFound() { foundRunning_ = true; }
  // Nothing listens on the port: one that was found has ended, which is logged once. Any thread.
  void noteUnreachable();
  // No restart from now on; asks the engine to end and does not wait for it.
  void shutdown();

 private:
  struct Command {
    QString python;
    QString dir;
    std::map<QString, QString> env;
  };

  std::optional<Command> engineCommand() const;
  void processExited();

  const Services services_;
  std::shared_ptr<ChildProcess> process_;
  std::atomic<bool> foundRunning_ = false;  // An engine that was not started here is in use.
  std::atomic<bool> quitting_ = false;      // Only ever turns true.
  std::atomic<std::int64_t> restarts_ = 0;  // Never reset.
};

}  // namespace tavin
