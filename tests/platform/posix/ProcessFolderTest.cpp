#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/posix/ProcessFolder.h"

namespace tavin::posix {
namespace {

pid_t childNamed(const char* name) {
  int ready[2] = {};
  EXPECT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::prctl(PR_SET_NAME, name);
    ::close(ready[1]);
    ::close(ready[0]);
    ::pause();
    ::_exit(0);
  }
  ::close(ready[1]);
  char nothing = 0;
  EXPECT_EQ(::read(ready[0], &nothing, 1), 0) << "its end is closed once it has the name";
  ::close(ready[0]);
  return child;
}

void end(pid_t child) {
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

TEST(ProcessFolderTest, ThisProcessAndItsChildForWindowsShowOurWindowsAndNoOther) {
  const pid_t windows = childNamed(windowProgramName);
  const pid_t another = childNamed("python3");
  EXPECT_TRUE(showsOurWindows(::getpid()));
  EXPECT_TRUE(showsOurWindows(windows));
  EXPECT_FALSE(showsOurWindows(another));
  EXPECT_FALSE(showsOurWindows(::getppid()));
  EXPECT_FALSE(showsOurWindows(0));
  EXPECT_FALSE(showsOurWindows(-1));
  end(windows);
  end(another);
  EXPECT_FALSE(showsOurWindows(windows));
}

}  // namespace
}  // namespace tavin::posix
