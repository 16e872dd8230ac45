#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <chrono>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixSystemLog.h"

namespace tavin::posix {
namespace {

// What a log daemon listens on.
class PosixSystemLogTest : public testing::Test {
 protected:
  PosixSystemLogTest() : path_(directory_.filePath(QStringLiteral("log")).toStdString()) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(daemon_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }

  std::string received() const {
    char buffer[16384];
    const ssize_t size = recv(daemon_.get(), buffer, sizeof buffer, MSG_DONTWAIT);
    return size < 0 ? std::string() : std::string(buffer, static_cast<std::size_t>(size));
  }

  QTemporaryDir directory_;
  std::string path_;
  FileDescriptor daemon_{socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

TEST_F(PosixSystemLogTest, WritesToStandardErrorAndToSyslog) {
  testing::internal::CaptureStderr();
  PosixSystemLog(path_).write(QStringLiteral("Tavin: Größe 100%s"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Tavin: Größe 100%s\n");
  const std::string id = "tavin\\[" + std::to_string(getpid()) + "\\]";
  EXPECT_THAT(received(), testing::MatchesRegex("<13>[A-Z][a-z][a-z] [ 0-9][0-9] [0-9:]{8} " + id +
                                                ": Tavin: Größe 100%s"));
}

TEST_F(PosixSystemLogTest, MakesOneLineOfSeveral) {
  testing::internal::CaptureStderr();
  PosixSystemLog(path_).write(QStringLiteral("one\ntwo\r\nthree\x1b[31m"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "one two  three [31m\n");
  EXPECT_THAT(received(), testing::EndsWith(": one two  three [31m"));
}

TEST_F(PosixSystemLogTest, DoesNotWaitForADaemonThatReadsNothing) {
  testing::internal::CaptureStderr();
  const auto start = std::chrono::steady_clock::now();
  PosixSystemLog log(path_);
  for (int i = 0; i < 2000; ++i) log.write(QStringLiteral("line"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(testing::internal::GetCapturedStderr().size(), 2000U * 5);
}

TEST_F(PosixSystemLogTest, WritesToStandardErrorWithoutADaemon) {
  testing::internal::CaptureStderr();
  PosixSystemLog("/nowhere/log").write(QStringLiteral("line"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "line\n");
}

}  // namespace
}  // namespace tavin::posix
