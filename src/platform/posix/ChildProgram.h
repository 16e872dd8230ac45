#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/ProcessLauncher.h"

namespace tavin::posix {

// What went wrong in the child before its program ran.
struct ChildFailure {
  enum class Step : int { workingDirectory, execute, parentGone };
  Step step = Step::execute;
  int error = 0;  // errno
};

// Everything that a forked child needs to become another program, prepared before the fork: after
// it only async-signal-safe calls are allowed, and allocating is none of them.
class ChildProgram {
 public:
  explicit ChildProgram(const ProcessDescription& description);

  // In the child. All signals are blocked; the three files are 3 or higher. Never returns: where
  // the program cannot run, a ChildFailure is written to `failurePipe`, which closes on exec.
  [[noreturn]] void become(pid_t parent, int input, int output, int failurePipe) const;

 private:
  std::string path_;
  std::string directory_;
  std::vector<std::string> arguments_;
  std::vector<std::string> environment_;
  std::vector<char*> argv_;
  std::vector<char*> envp_;
  int highestFile_;
};

}  // namespace tavin::posix
