#include "FakeShell.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusVariant>
#include <memory>
#include <utility>

namespace tavin::test {
namespace {

const QString fakeName = QStringLiteral("fake-shell");
constexpr const char* names[] = {"org.gnome.Mutter.IdleMonitor", "org.gnome.Shell"};

// Lives as long as the tests run: watchers on the session bus's shared connection hear nothing
// under a second application.
class ApplicationEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    application_ = std::make_unique<QCoreApplication>(argumentCount_, nullptr);
  }
  void TearDown() override { application_.reset(); }

 private:
  int argumentCount_ = 0;
  std::unique_ptr<QCoreApplication> application_;
};

const auto* const environment =
    ::testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());

}  // namespace

FakeShell::FakeShell()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, fakeName)) {
  bus_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
}

FakeShell::~FakeShell() { QDBusConnection::disconnectFromBus(fakeName); }

void FakeShell::start() {
  for (const char* name : names)
    EXPECT_TRUE(bus_.registerService(QLatin1String(name))) << "another shell runs in this session";
}

void FakeShell::stop() {
  for (const char* name : names) bus_.unregisterService(QLatin1String(name));
}

bool FakeShell::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  questions_ << message;
  return true;
}

void FakeShell::tellIdleTime(qulonglong milliseconds) {
  for (const QDBusMessage& question : std::exchange(questions_, {}))
    bus_.send(question.createReply(milliseconds));
}

void FakeShell::tellVersion(const QString& version) {
  for (const QDBusMessage& question : std::exchange(questions_, {}))
    bus_.send(question.createReply(QVariant::fromValue(QDBusVariant(version))));
}

}  // namespace tavin::test
