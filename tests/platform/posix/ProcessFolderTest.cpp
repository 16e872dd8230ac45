#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/posix/ProcessFolder.h"

namespace tavin::posix {
namespace {

TEST(ProcessFolderTest, ThisProcessAndItsChildrenAreOursAndNoOther) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::pause();
    ::_exit(0);
  }
  EXPECT_TRUE(isOurs(::getpid()));
  EXPECT_TRUE(isOurs(child));
  EXPECT_FALSE(isOurs(::getppid()));
  EXPECT_FALSE(isOurs(0));
  EXPECT_FALSE(isOurs(-1));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_FALSE(isOurs(child));
}

}  // namespace
}  // namespace tavin::posix
