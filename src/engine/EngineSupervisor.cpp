#include "engine/EngineSupervisor.h"

#include <unistd.h>

#include <QDir>
#include <QFileInfo>

#include "engine/EngineLog.h"
#include "platform/Bundle.h"
#include "platform/MainQueue.h"
#include "platform/ProcessLauncher.h"
#include "platform/SystemLog.h"

namespace tavin {
namespace {

constexpr std::int64_t maxRestarts = 5;
constexpr double restartDelay = 2.0;

}  // namespace

std::optional<EngineSupervisor::Command> EngineSupervisor::engineCommand() const {
  if (const auto& resources = services_.bundle.resourcesDirectory) {
    const QString dir = *resources + QStringLiteral("/engine");
    const QString python = dir + QStringLiteral("/python/bin/python3");
    const QFileInfo interpreter(python);
    if (interpreter.isFile() && interpreter.isExecutable()) {
      return Command{python,
                     dir,
                     {{QStringLiteral("PYTHONPATH"),
                       dir + QLatin1Char(':') + dir + QStringLiteral("/site-packages")},
                      {QStringLiteral("PYTHONNOUSERSITE"), QStringLiteral("1")},
                      {QStringLiteral("PYTHONDONTWRITEBYTECODE"), QStringLiteral("1")}}};
    }
  }
  QString dir = services_.bundle.info.value(QStringLiteral("TavinEngineDir")).toString();
  if (dir.isEmpty())
    return std::nullopt;
  dir = QDir::current().absoluteFilePath(dir);  // The child looks for its program from there.
  return Command{dir + QStringLiteral("/.venv/bin/python"), dir, {}};
}

void EngineSupervisor::launch() {
  const auto command = engineCommand();
  if (!command) {
    services_.log.write(QStringLiteral("Tavin: no bundled engine and no TavinEngineDir"));
    return;
  }
  ProcessDescription child;
  child.executable = command->python;
  child.arguments = {QStringLiteral("-m"), QStringLiteral("tavin.server")};
  child.workingDirectory = command->dir;
  child.environment = command->env;
  child.output = EngineLog::open();
  auto result = services_.launcher.launch(child, [weak = weak_from_this()] {
    if (const auto self = weak.lock())
      self->processExited();
  });
  if (child.output >= 0)
    ::close(child.output);
  if (const auto* error = std::get_if<LaunchError>(&result))
    services_.log.write(QStringLiteral("Tavin: could not start engine: ") + error->description);
  else
    process_ = std::get<std::shared_ptr<ChildProcess>>(result);
}

void EngineSupervisor::processExited() {
  if (quitting_ || restarts_ >= maxRestarts)
    return;
  ++restarts_;
  services_.mainQueue.asyncAfter(restartDelay, [self = shared_from_this()] { self->launch(); });
}

// An engine that was found at start has no successor here; the next request sees that it has gone.
void EngineSupervisor::noteUnreachable() {
  if (!quitting_ && foundRunning_.exchange(false))
    services_.log.write(
        QStringLiteral("Tavin: the engine that was running already has ended; Tavin starts its own "
                       "when it is started again"));
}

void EngineSupervisor::shutdown() {
  quitting_ = true;
  if (process_)
    process_->terminate();
}

}  // namespace tavin
