#pragma once

#include "platform/ProcessLauncher.h"

namespace tavin::posix {

// Starts children with fork and exec. A child inherits no file of ours but its input and output, no
// signal mask and no handler, and gets SIGTERM when the main thread ends in any way.
class PosixProcessLauncher final : public ProcessLauncher {
 public:
  // The executable is a path; it is not looked up in PATH. An executable or working directory that
  // cannot be used is a LaunchError that says which and why.
  std::variant<std::shared_ptr<ChildProcess>, LaunchError> launch(
      const ProcessDescription& description, std::function<void()> onExit) override;
};

}  // namespace tavin::posix
