#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <thread>
#include <utility>

#include "platform/Eventually.h"
#include "platform/atspi/BusAddress.h"
#include "platform/atspi/Object.h"
#include "platform/bus/SessionBus.h"

namespace tavin::test {

// A program on the accessibility bus that tells whatever a test wants it to. It answers while the
// main thread runs its event loop.
class FakeProgram final : public QDBusVirtualObject {
 public:
  // The values of the answer: none for an error, nothing at all for silence.
  using Answers = std::function<std::optional<QVariantList>(
      const QString& path, const QString& member, const QVariantList& arguments)>;

  explicit FakeProgram(Answers answers)
      : answers_(std::move(answers)),
        name_(QString("fake program %1").arg(quintptr(this))),
        connection_(QDBusConnection::connectToBus(
            atspi::busAddress(bus::sessionBus(), Deadline::in(5)), name_)) {
    qDBusRegisterMetaType<atspi::ObjectRef>();
    qDBusRegisterMetaType<QList<atspi::ObjectRef>>();
    connection_.registerVirtualObject("/", this, QDBusConnection::SubPath);
  }
  ~FakeProgram() override { QDBusConnection::disconnectFromBus(name_); }

  atspi::ObjectRef object(const QString& path) const { return {connection_.baseService(), path}; }
  // Becomes one of the programs that the bus lists, with its root at that path.
  void enter(const QString& root) {
    auto message =
        QDBusMessage::createMethodCall("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root",
                                       "org.a11y.atspi.Socket", "Embed");
    message << QVariant::fromValue(object(root));
    connection_.asyncCall(message);
  }
  int asked(const QString& member) const {
    const auto found = asked_.find(member);
    return found == asked_.end() ? 0 : found->second;
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    ++asked_[message.member()];
    const auto values = answers_(message.path(), message.member(), message.arguments());
    if (values)
      connection.send(values->isEmpty() ? message.createErrorReply(QDBusError::NotSupported, "no")
                                        : message.createReply(*values));
    return true;
  }

 private:
  Answers answers_;
  const QString name_;
  QDBusConnection connection_;
  std::map<QString, int> asked_;
};

// Runs `task` on a thread of its own, as the work queue does, and answers for the fake meanwhile.
inline bool onWorkQueue(const std::function<void()>& task) {
  std::atomic<bool> done = false;
  std::thread queue([&] {
    task();
    done = true;
  });
  const bool inTime = eventually([&] { return done.load(); }, 100'000);
  queue.join();
  return inTime;
}

}  // namespace tavin::test
