#include "platform/posix/PosixProcessLauncher.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/posix/ChildProgram.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {
namespace {

constexpr int execDeadline = 500;  // Milliseconds; the main thread waits.

QString errorText(int error) {
  return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}

// Known by a process file descriptor: the number of a child that has ended may belong to another
// program, the descriptor never does.
class PosixChild final : public ChildProcess {
 public:
  explicit PosixChild(FileDescriptor pidfd) : pidfd_(std::move(pidfd)) {}
  void terminate() override { send(SIGTERM); }
  void kill() override { send(SIGKILL); }
  // Sleeps until the child has ended, and takes it off the process table.
  void wait() const {
    siginfo_t info;
    while (waitid(P_PIDFD, static_cast<id_t>(pidfd_.get()), &info, WEXITED) != 0 &&
           errno == EINTR) {
    }
  }

 private:
  void send(int signal) { syscall(SYS_pidfd_send_signal, pidfd_.get(), signal, nullptr, 0); }

  FileDescriptor pidfd_;
};

// Above the standard files, so that giving the child those overwrites none of them.
FileDescriptor above2(int fd) { return FileDescriptor(fcntl(fd, F_DUPFD_CLOEXEC, 3)); }

struct Pipe {
  FileDescriptor read;
  FileDescriptor write;
};

Pipe makePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0)
    return {FileDescriptor(), FileDescriptor()};
  const FileDescriptor read(ends[0]);
  const FileDescriptor write(ends[1]);
  return {above2(read.get()), above2(write.get())};
}

// Blocks every signal, so that no handler of ours runs in the child before it has reset them.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_;
};

// Nothing when the program runs, which closes the pipe. A child that is still on its way at the
// deadline counts as started; if it fails then, it is a child that ended.
std::optional<ChildFailure> awaitExec(const FileDescriptor& pipe) {
  pollfd readable = {pipe.get(), POLLIN, 0};
  while (poll(&readable, 1, execDeadline) < 0 && errno == EINTR) {
  }
  if (readable.revents == 0)
    return std::nullopt;
  ChildFailure failure;
  if (read(pipe.get(), &failure, sizeof failure) != sizeof failure)
    return std::nullopt;
  return failure;
}

LaunchError describe(const ChildFailure& failure, const ProcessDescription& description) {
  const bool directory = failure.step == ChildFailure::Step::workingDirectory;
  return {(directory ? description.workingDirectory : description.executable) +
          QStringLiteral(": ") + errorText(failure.error)};
}

// A child that could not be watched or asked to end is none that we may keep.
LaunchError abandon(pid_t pid, int error) {
  ::kill(pid, SIGKILL);
  while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
  }
  return {errorText(error)};
}

}  // namespace

std::variant<std::shared_ptr<ChildProcess>, LaunchError> PosixProcessLauncher::launch(
    const ProcessDescription& description, std::function<void()> onExit) {
  const ChildProgram program(description);
  const FileDescriptor null(open("/dev/null", O_RDWR | O_CLOEXEC));
  const FileDescriptor input = above2(description.input >= 0 ? description.input : null.get());
  const FileDescriptor output = above2(description.output >= 0 ? description.output : null.get());
  Pipe failures = makePipe();
  if (!input || !output || !failures.read || !failures.write)
    return LaunchError{errorText(errno)};

  const pid_t self = getpid();
  pid_t pid = -1;
  {
    const SignalsBlocked blocked;
    pid = fork();
    if (pid == 0)
      program.become(self, input.get(), output.get(), failures.write.get());
  }
  if (pid < 0)
    return LaunchError{errorText(errno)};
  FileDescriptor pidfd(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
  if (!pidfd)
    return abandon(pid, errno);
  auto child = std::make_shared<PosixChild>(std::move(pidfd));
  failures.write.reset();
  if (const auto failure = description.awaited ? awaitExec(failures.read) : std::nullopt) {
    child->wait();
    return describe(*failure, description);
  }
  try {
    std::thread([child, onExit = std::move(onExit)] {
      child->wait();
      if (onExit)
        onExit();
    }).detach();
  } catch (const std::system_error& error) {
    return abandon(pid, error.code().value());
  }
  return child;
}

}  // namespace tavin::posix
