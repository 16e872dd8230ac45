#pragma once

#include <fcntl.h>

#include <QTimer>
#include <memory>

#include "platform/SystemLog.h"
#include "platform/widgets/Windows.h"
#include "platform/windowlink/WindowProgram.h"

namespace tavin::test {

// Plays the part of the program for windows in this process, so that a test can look at what is
// shown and use it.
class InProcessLauncher final : public ProcessLauncher {
 public:
  std::variant<std::shared_ptr<ChildProcess>, LaunchError> launch(
      const ProcessDescription& description, std::function<void()> /*onExit*/) override {
    posix::FileDescriptor socket(::fcntl(description.input, F_DUPFD_CLOEXEC, 3));
    windows_ = std::make_unique<widgets::Windows>(
        std::move(socket), [this] { QTimer::singleShot(0, [this] { windows_.reset(); }); });
    return std::make_shared<Child>(*this);
  }

 private:
  struct Child final : ChildProcess {
    explicit Child(InProcessLauncher& launcher) : launcher_(launcher) {}
    void terminate() override {}
    void kill() override { launcher_.windows_.reset(); }
    InProcessLauncher& launcher_;
  };

  std::unique_ptr<widgets::Windows> windows_;
};

// The program as the tray and the alerts use it, anew for each caller. The launcher is one for all
// and holds the windows of one program: those of the one before must be closed.
inline std::shared_ptr<windowlink::WindowProgram> inProcessProgram() {
  class NoLog final : public SystemLog {
    void write(const QString& /*line*/) override {}
  };
  static NoLog log;
  static InProcessLauncher launcher;
  return std::make_shared<windowlink::WindowProgram>(
      launcher, log, windowlink::WindowProgram::Place{"/proc/self/exe", "xcb"});
}

}  // namespace tavin::test
