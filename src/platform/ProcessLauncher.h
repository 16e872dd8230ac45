#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>
#include <variant>

namespace tavin {

struct ProcessDescription {
  QString executable;
  QStringList arguments;
  QString workingDirectory;
  std::map<QString, QString> environment;  // Added to, and overriding, this process's own.
  int output = -1;  // Open file for standard output and error; -1 gives the null device. Not owned.
  int input = -1;   // The same for standard input.
  // Whether launch() waits until its program runs, half a second at most. Else a program that
  // cannot be run is a child that ends at once.
  bool awaited = true;
};

// A started child. Releasing the handle leaves the child alone.
class ChildProcess {
 public:
  virtual ~ChildProcess() = default;
  // Asks it politely to end; harmless when it has ended. Never waits. Main thread.
  virtual void terminate() = 0;
  // Ends it at once, also where it is stopped. Never waits. Main thread.
  virtual void kill() = 0;
};

struct LaunchError {
  QString description;
};

// Starts child processes. A child is asked to end too when this process dies in any way.
class ProcessLauncher {
 public:
  virtual ~ProcessLauncher() = default;
  // Main thread only: the request at the parent's death is tied to the calling thread. `onExit`
  // runs once, on a thread of the launcher's own, and only for a child that did start.
  virtual std::variant<std::shared_ptr<ChildProcess>, LaunchError> launch(
      const ProcessDescription& description, std::function<void()> onExit) = 0;
};

}  // namespace tavin
