#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <csignal>

#include "platform/desktop/QtApplication.h"

namespace tavin::desktop {
namespace {

constexpr int deadline = 20000;  // Milliseconds.

class QtApplicationTest : public testing::Test {
 protected:
  void start(const char* manner, const QStringList& wrapper = {}) {
    const QString self = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    QStringList command = wrapper;
    command << self.left(self.lastIndexOf(u'/')) + QStringLiteral("/application_probe")
            << QLatin1String(manner);
    const QString program = command.takeFirst();
    process_.start(program, command);
    ASSERT_TRUE(process_.waitForStarted(deadline));
  }

  bool says(const QByteArray& text) {
    while (!output_.contains(text)) {
      if (!process_.waitForReadyRead(deadline))
        return false;
      output_ += process_.readAllStandardOutput();
    }
    return true;
  }

  // All that it said, once it has ended in order.
  QByteArray end(int signal = 0) {
    if (signal != 0)
      kill(static_cast<pid_t>(process_.processId()), signal);
    EXPECT_TRUE(process_.waitForFinished(deadline));
    EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process_.exitCode(), 0);
    return output_ + process_.readAllStandardOutput();
  }

  QProcess process_;
  QByteArray output_;
};

TEST_F(QtApplicationTest, SignalsTerminateInOrder) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    output_.clear();
    start("wait");
    ASSERT_TRUE(says("running"));
    EXPECT_EQ(end(signal), "launched\nrunning\nterminating\n");
  }
}

TEST_F(QtApplicationTest, NohupIsHonoured) {
  start("wait", {QStringLiteral("nohup")});
  ASSERT_TRUE(says("running"));
  kill(static_cast<pid_t>(process_.processId()), SIGHUP);
  EXPECT_FALSE(process_.waitForFinished(200));
  end(SIGTERM);
}

TEST_F(QtApplicationTest, ABrokenPipeDoesNotEndIt) {
  start("wait");
  ASSERT_TRUE(says("running"));
  kill(static_cast<pid_t>(process_.processId()), SIGPIPE);
  EXPECT_FALSE(process_.waitForFinished(200));
  end(SIGTERM);
}

TEST_F(QtApplicationTest, TerminatesInsideANestedLoop) {
  start("nested");
  ASSERT_TRUE(says("running"));
  EXPECT_EQ(end(SIGTERM), "launched\nrunning\nterminating\n");
}

TEST_F(QtApplicationTest, TerminatesWhileItIsLaunching) {
  start("launch");
  EXPECT_EQ(end(), "launched\nterminating\n");
}

TEST_F(QtApplicationTest, TheEndOfTheSessionTerminatesIt) {
  start("quit");
  EXPECT_EQ(end(), "launched\nterminating\n");
}

}  // namespace
}  // namespace tavin::desktop
