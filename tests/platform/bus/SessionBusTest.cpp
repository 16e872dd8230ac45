#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/bus/SessionBus.h"
#include "platform/desktop/ConfigHome.h"

namespace tavin::desktop {
namespace {

constexpr auto variable = "DBUS_SESSION_BUS_ADDRESS";

// The decision holds for the whole process, so there is one test.
TEST(SessionBusTest, WithoutABusNoneIsStartedAndTheEnvironmentStays) {
  const QTemporaryDir empty;
  const ScopedVariable folder("XDG_RUNTIME_DIR", empty.path().toLocal8Bit());
  const ScopedVariable address(variable, {});
  const ScopedVariable display("DISPLAY", {});  // Through it a running bus could be found.
  qunsetenv(variable);
  qunsetenv("DISPLAY");
  EXPECT_FALSE(bus::sessionBus().isConnected());
  EXPECT_FALSE(qEnvironmentVariableIsSet(variable));
  EXPECT_FALSE(QDBusConnection::sessionBus().isConnected());
  EXPECT_FALSE(bus::connectToSessionBus(QStringLiteral("other")).isConnected());
  EXPECT_FALSE(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("third"))
                   .isConnected());
}

}  // namespace
}  // namespace tavin::desktop
