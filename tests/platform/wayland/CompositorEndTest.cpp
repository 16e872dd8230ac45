#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <vector>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/CompositorEnd.h"

namespace tavin::wayland {
namespace {

// A socket where a compositor would listen; those that connected stay until it ends.
class CompositorEndTest : public testing::Test {
 protected:
  CompositorEndTest() {
    qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    qputenv("WAYLAND_DISPLAY", "wayland-test");
    qunsetenv("QT_WAYLAND_RECONNECT");
    listen();
  }
  ~CompositorEndTest() override { qunsetenv("QT_WAYLAND_RECONNECT"); }

  void listen() {
    const QByteArray path = folder_.filePath("wayland-test").toUtf8();
    QFile::remove(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    socket_ =
        posix::FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    ASSERT_EQ(::bind(socket_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(socket_.get(), 5), 0);
  }
  bool isConnected() {
    posix::FileDescriptor client(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!client)
      return false;
    clients_.push_back(std::move(client));
    return true;
  }
  void end() {
    socket_.reset();
    clients_.clear();
  }
  void watch() {
    whenCompositorEnds([this] { ++ends; });
    ASSERT_TRUE(waitFor([this] { return isConnected(); }));
  }
  template <typename Condition>
  static bool waitFor(Condition condition, int ms = 10'000) {
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
      if (waited.elapsed() > ms)
        return false;
      QCoreApplication::processEvents();
      QThread::msleep(1);
    }
    return true;
  }

  int ends = 0;

 private:
  QTemporaryDir folder_;
  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  posix::FileDescriptor socket_;
  std::vector<posix::FileDescriptor> clients_;
};

TEST_F(CompositorEndTest, IsToldOnceAtOnce) {
  watch();
  EXPECT_FALSE(waitFor([this] { return ends > 0; }, 100));
  end();
  EXPECT_TRUE(waitFor([this] { return ends > 0; }, 1000));
  EXPECT_FALSE(waitFor([this] { return ends > 1; }, 100));
}

TEST_F(CompositorEndTest, IsNoneWhereTheSessionStartsAnother) {
  qputenv("QT_WAYLAND_RECONNECT", "1");
  watch();
  end();
  EXPECT_FALSE(waitFor([this] { return ends > 0; }, 700));
  listen();
  EXPECT_TRUE(waitFor([this] { return isConnected(); }));
  EXPECT_EQ(ends, 0);
  end();
  EXPECT_TRUE(waitFor([this] { return ends > 0; })) << "where none comes";
}

}  // namespace
}  // namespace tavin::wayland
