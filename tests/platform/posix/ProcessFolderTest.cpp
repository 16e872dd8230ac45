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
  EXPECT_TRUE(isSelfOrChild(::getpid()));
  EXPECT_TRUE(isSelfOrChild(child));
  EXPECT_FALSE(isSelfOrChild(::getppid()));
  EXPECT_FALSE(isSelfOrChild(0));
  EXPECT_FALSE(isSelfOrChild(-1));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_FALSE(isSelfOrChild(child));
}

}  // namespace
}  // namespace tavin::posix
