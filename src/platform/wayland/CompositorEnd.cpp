#include "platform/wayland/CompositorEnd.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <utility>

#include "platform/posix/LocalSocket.h"

namespace tavin::wayland {
namespace {

constexpr int tryEveryMs = 500;
constexpr int mostTries = 10;

QByteArray socketPath() {
  const QByteArray name = qgetenv("WAYLAND_DISPLAY");
  return name.startsWith('/') ? name : qgetenv("XDG_RUNTIME_DIR") + '/' + name;
}

// Says nothing to the compositor, so it never waits for an answer of one.
posix::FileDescriptor connectSilently() { return posix::connectAtOnce(socketPath().toStdString()); }

class CompositorEnd final : public QObject {
 public:
  CompositorEnd(QObject* parent, std::function<void()> ended)
      : QObject(parent), ended_(std::move(ended)) {
    if (!connectToIt())
      tryAgain();
  }

 private:
  bool connectToIt() {
    socket_ = connectSilently();
    if (!socket_)
      return false;
    hangup_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
    connect(hangup_.get(), &QSocketNotifier::activated, this, [this] { readable(); });
    return true;
  }

  void readable() {
    char bytes[256];
    const ssize_t count = ::recv(socket_.get(), bytes, sizeof bytes, 0);
    if (count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR)))
      return;
    hangup_->setEnabled(false);
    triesLeft_ = qEnvironmentVariableIntValue("QT_WAYLAND_RECONNECT") != 0 ? mostTries : 0;
    lookForAnother();
  }

  void lookForAnother() {
    if (triesLeft_-- <= 0)
      return ended_();
    if (!connectToIt())
      QTimer::singleShot(tryEveryMs, this, [this] { lookForAnother(); });
  }

  // It may be too busy to take the first connection.
  void tryAgain() {
    triesLeft_ = mostTries;
    QTimer::singleShot(tryEveryMs, this, [this] { lookForAnother(); });
  }

  const std::function<void()> ended_;
  posix::FileDescriptor socket_;
  std::unique_ptr<QSocketNotifier> hangup_;
  int triesLeft_ = 0;
};

}  // namespace

void whenCompositorEnds(std::function<void()> ended) {
  new CompositorEnd(QCoreApplication::instance(), std::move(ended));
}

}  // namespace tavin::wayland
