#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <thread>

#include "platform/bus/BusProbe.h"
#include "platform/posix/FileDescriptor.h"

namespace tavin::desktop {
namespace {

// A socket that takes connections and, left alone, never answers.
class BusProbeTest : public testing::Test {
 protected:
  BusProbeTest() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path_.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(bus_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(bus_.get(), 5), 0);
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("bus"));
  QString address_ = QStringLiteral("unix:path=") + path_ + QStringLiteral(",guid=0");
  posix::FileDescriptor bus_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST_F(BusProbeTest, ABusThatAnswersIsFound) {
  std::thread bus([this] {
    const posix::FileDescriptor peer(accept(bus_.get(), nullptr, nullptr));
    char question[256];
    EXPECT_GT(recv(peer.get(), question, sizeof question, 0), 0);
    EXPECT_EQ(send(peer.get(), "OK 0\r\n", 6, 0), 6);
  });
  EXPECT_TRUE(bus::busAnswers(address_, Deadline::in(10)));
  bus.join();
}

TEST_F(BusProbeTest, ABusThatHangsIsGivenUpAtTheDeadline) {
  QElapsedTimer time;
  time.start();
  EXPECT_FALSE(bus::busAnswers(address_, Deadline::in(0.2)));
  EXPECT_GE(time.elapsed(), 190);
  EXPECT_LT(time.elapsed(), 5000);
}

TEST_F(BusProbeTest, WhatIsNoSocketDoesNotAnswer) {
  bus_.reset();
  EXPECT_FALSE(bus::busAnswers(address_, Deadline::in(10)));
  for (const char* address : {"", "unix:", "unix:path=", "autolaunch:", "unix:path=/dev/null"})
    EXPECT_FALSE(bus::busAnswers(QLatin1String(address), Deadline::in(10))) << address;
  EXPECT_FALSE(
      bus::busAnswers(QStringLiteral("unix:path=/") + QString(200, u'x'), Deadline::in(10)));
}

}  // namespace
}  // namespace tavin::desktop
