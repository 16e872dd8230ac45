#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <csignal>
#include <cstdlib>

#include "platform/posix/OwnProcess.h"

namespace tavin::test {
namespace {

// How a child ends that does this.
template <typename Deed>
int fateOf(Deed deed) {
  const pid_t child = ::fork();
  if (child == 0)
    ::_exit(deed());
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

bool isNullDevice(int file) {
  struct stat status = {};
  return ::fstat(file, &status) == 0 && S_ISCHR(status.st_mode) && status.st_rdev == makedev(1, 3);
}

TEST(OwnProcessTest, ClosedStandardFilesBecomeTheNullDevice) {
  for (int closed = 0; closed < 8; ++closed) {
    const int fate = fateOf([closed] {
      for (int file = 0; file < 3; ++file)
        if (closed & (1 << file))
          ::close(file);
      posix::openStandardFiles();
      for (int file = 0; file < 3; ++file)
        if ((closed & (1 << file)) && !isNullDevice(file))
          return 1;
      return ::dup(0) > 2 ? 0 : 2;
    });
    EXPECT_EQ(fate, 0) << closed;
  }
}

int crash() {
  rlimit limit{};
  ::getrlimit(RLIMIT_CORE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_CORE, &limit);
  posix::keepMemoryPrivate();
  std::abort();
}

TEST(OwnProcessTest, CrashLeavesNoCoreUnlessADeveloperWantsOne) {
  const QTemporaryDir folder;
  const auto crashThere = [&folder] {
    if (::chdir(folder.path().toUtf8().constData()) != 0)
      return 1;
    return crash();
  };
  const int fate = fateOf(crashThere);
  ASSERT_TRUE(WIFSIGNALED(fate));
  EXPECT_FALSE(WCOREDUMP(fate));
  ::setenv("TAVIN_CORE_DUMPS", "1", 1);
  const int wanted = fateOf([] {
    rlimit before{};
    ::getrlimit(RLIMIT_CORE, &before);
    posix::keepMemoryPrivate();
    rlimit after{};
    ::getrlimit(RLIMIT_CORE, &after);
    return before.rlim_max == after.rlim_max && before.rlim_cur == after.rlim_cur ? 0 : 1;
  });
  ::unsetenv("TAVIN_CORE_DUMPS");
  EXPECT_EQ(wanted, 0);
}

// Programs that collect crashes are given everything at a limit of 0.
TEST(OwnProcessTest, LimitOfCoresIsOneWhichTheKernelTakesForNoneInEveryCase) {
  const int fate = fateOf([] {
    rlimit limit{};
    ::getrlimit(RLIMIT_CORE, &limit);
    const rlim_t most = limit.rlim_max;
    posix::keepMemoryPrivate();
    ::getrlimit(RLIMIT_CORE, &limit);
    return limit.rlim_max == std::min<rlim_t>(most, 1) && limit.rlim_cur == limit.rlim_max ? 0 : 1;
  });
  EXPECT_EQ(fate, 0);
}

}  // namespace
}  // namespace tavin::test
