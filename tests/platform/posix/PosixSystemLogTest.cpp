#include <fcntl.h>
#include <gmock/gmock.h>
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

// Standard error as a pipe whose reader has stopped.
class StoppedReaderTest : public PosixSystemLogTest {
 protected:
  void SetUp() override {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    reader_ = FileDescriptor(ends[0]);
    const FileDescriptor writer(ends[1]);
    ASSERT_GE(dup2(writer.get(), STDERR_FILENO), 0);
  }
  void TearDown() override { dup2(before_.get(), STDERR_FILENO); }

  std::string piped() {
    fcntl(reader_.get(), F_SETFL, O_NONBLOCK);
    std::string text(1 << 20, '\0');
    const ssize_t size = read(reader_.get(), text.data(), text.size());
    text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return text;
  }

  FileDescriptor before_{fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)};
  FileDescriptor reader_;
};

TEST_F(StoppedReaderTest, IsNotWaitedForAndTheDaemonStillHears) {
  PosixSystemLog log(path_);
  const QString line(700, u'x');
  for (int i = 0; i < 200; ++i) log.write(line);  // More than a pipe holds.
  EXPECT_THAT(received(), testing::EndsWith(line.toStdString()));
  EXPECT_THAT(piped(), testing::StartsWith(line.toStdString() + "\n"));
  log.write(QStringLiteral("after it woke up"));
  EXPECT_EQ(piped(), "after it woke up\n");
}

TEST_F(StoppedReaderTest, IsNotWaitedForInOneLongLine) {
  PosixSystemLog(path_).write(QString(300000, u'x'));
  EXPECT_THAT(piped(), testing::StartsWith("xxx"));
}

}  // namespace
}  // namespace tavin::posix
