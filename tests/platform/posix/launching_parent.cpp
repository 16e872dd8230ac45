// launching_parent OUTPUT CHILD: starts the child, whose output goes to that file, and stays until
// it is killed.

#include <fcntl.h>
#include <unistd.h>

#include <variant>

#include "platform/posix/PosixProcessLauncher.h"

int main(int argc, char** argv) {
  if (argc < 3)
    return 2;
  const int output = open(argv[1], O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  tavin::posix::PosixProcessLauncher launcher;
  const auto result = launcher.launch({.executable = QString::fromLocal8Bit(argv[2]),
                                       .arguments = {QStringLiteral("wait")},
                                       .workingDirectory = {},
                                       .environment = {},
                                       .output = output},
                                      [] {});
  if (std::holds_alternative<tavin::LaunchError>(result))
    return 1;
  alarm(60);  // No test leaves it behind.
  pause();
}
