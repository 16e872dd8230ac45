// The program that the process launcher's tests start.
//
//   launched_child report      says what it got from its parent, line by line, and ends
//   launched_child wait        says "ready", then "asked" when SIGTERM comes, and ends

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void reportFiles() {
  DIR* folder = opendir("/proc/self/fd");
  while (const dirent* entry = readdir(folder)) {
    const int fd = std::atoi(entry->d_name);
    if (entry->d_name[0] != '.' && fd != dirfd(folder))
      std::printf("file %d\n", fd);
  }
  closedir(folder);
  struct stat input = {};
  struct stat null = {};
  fstat(STDIN_FILENO, &input);
  stat("/dev/null", &null);
  std::printf("input is null: %d\n", input.st_rdev == null.st_rdev ? 1 : 0);
}

void reportSignals() {
  sigset_t blocked;
  sigprocmask(SIG_SETMASK, nullptr, &blocked);
  for (const int number : {SIGINT, SIGHUP, SIGPIPE, SIGUSR1}) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (sigismember(&blocked, number) != 0 || action.sa_handler != SIG_DFL)
      std::printf("signal %d is not as it should be\n", number);
  }
}

int report(int argc, char** argv) {
  for (int i = 2; i < argc; ++i) std::printf("argument %s\n", argv[i]);
  for (char** entry = environ; *entry != nullptr; ++entry) std::printf("environment %s\n", *entry);
  char directory[4096] = "";
  if (getcwd(directory, sizeof directory) != nullptr)
    std::printf("directory %s\n", directory);
  reportFiles();
  reportSignals();
  std::fflush(stdout);
  std::fprintf(stderr, "end of the report\n");
  return 0;
}

int waitForSignal() {
  sigset_t asked;
  sigemptyset(&asked);
  sigaddset(&asked, SIGTERM);
  sigprocmask(SIG_BLOCK, &asked, nullptr);
  std::printf("ready %d\n", static_cast<int>(getpid()));
  std::fflush(stdout);
  alarm(60);  // No test leaves it behind.
  int number = 0;
  sigwait(&asked, &number);
  std::printf("asked\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::strcmp(argv[1], "wait") == 0)
    return waitForSignal();
  return report(argc, argv);
}
