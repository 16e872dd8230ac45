#include "FakeShell.h"

#include <gtest/gtest.h>

#include <utility>

namespace tavin::test {
namespace {

const QString fakeName = QStringLiteral("fake-shell");

}  // namespace

FakeShell::FakeShell()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, fakeName)) {
  bus_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
}

FakeShell::~FakeShell() { QDBusConnection::disconnectFromBus(fakeName); }

void FakeShell::start() {
  for (const char* name : {"org.gnome.Mutter.IdleMonitor", "org.gnome.Shell"})
    EXPECT_TRUE(bus_.registerService(QLatin1String(name))) << "another shell runs in this session";
}

bool FakeShell::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  questions_ << message;
  return true;
}

void FakeShell::tellIdleTime(qulonglong milliseconds) {
  for (const QDBusMessage& question : std::exchange(questions_, {}))
    bus_.send(question.createReply(milliseconds));
}

}  // namespace tavin::test
