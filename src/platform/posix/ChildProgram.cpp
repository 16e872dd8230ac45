#include "platform/posix/ChildProgram.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string_view>

namespace tavin::posix {
namespace {

std::string bytes(const QString& text) { return QFile::encodeName(text).toStdString(); }

// Our own environment, whose bytes pass unchanged, with the additions winning.
std::vector<std::string> mergedEnvironment(const std::map<QString, QString>& additions) {
  std::vector<std::string> merged;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const std::string name(text.substr(0, text.find('=')));
    if (!additions.contains(QFile::decodeName(name.c_str())))
      merged.emplace_back(text);
  }
  for (const auto& [name, value] : additions) merged.push_back(bytes(name) + '=' + bytes(value));
  return merged;
}

std::vector<char*> pointers(std::vector<std::string>& strings) {
  std::vector<char*> result;
  for (std::string& string : strings) result.push_back(string.data());
  result.push_back(nullptr);
  return result;
}

// A handler of ours must not run in the child, and an ignored signal would stay ignored.
void resetSignals() {
  struct sigaction defaults = {};
  defaults.sa_handler = SIG_DFL;
  for (int number = 1; number < NSIG; ++number) sigaction(number, &defaults, nullptr);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

void closeOthersOnExec(int highest) {
  if (close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
    return;
  for (int fd = 3; fd <= highest; ++fd) fcntl(fd, F_SETFD, FD_CLOEXEC);
}

[[noreturn]] void fail(int pipe, ChildFailure::Step step) {
  const ChildFailure failure{step, errno};
  // A failed write leaves the parent with an early exit instead of a reason.
  [[maybe_unused]] const ssize_t written = write(pipe, &failure, sizeof failure);
  _exit(127);
}

}  // namespace

ChildProgram::ChildProgram(const ProcessDescription& description)
    : path_(bytes(description.executable)),
      directory_(bytes(description.workingDirectory)),
      environment_(mergedEnvironment(description.environment)),
      highestFile_(static_cast<int>(std::clamp(sysconf(_SC_OPEN_MAX), 256L, 65536L))) {
  arguments_.push_back(path_);
  for (const QString& argument : description.arguments) arguments_.push_back(bytes(argument));
  argv_ = pointers(arguments_);
  envp_ = pointers(environment_);
}

void ChildProgram::become(pid_t parent, int input, int output, int failurePipe) const {
  resetSignals();
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent)  // It died before the request was made.
    fail(failurePipe, ChildFailure::Step::parentGone);
  if (!directory_.empty() && chdir(directory_.c_str()) != 0)
    fail(failurePipe, ChildFailure::Step::workingDirectory);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(output, STDERR_FILENO);
  closeOthersOnExec(highestFile_);
  execve(path_.c_str(), argv_.data(), envp_.data());
  fail(failurePipe, ChildFailure::Step::execute);
}

}  // namespace tavin::posix
