#include "platform/desktop/SessionBus.h"

#include <QFileInfo>
#include <QUrl>

#include "platform/desktop/BusProbe.h"

namespace tavin::desktop {
namespace {

constexpr double probeSeconds = 1;
constexpr auto variable = "DBUS_SESSION_BUS_ADDRESS";

// Empty where the D-Bus library would start a bus, which nobody would ever end.
QString sessionBusAddress() {
  const QString given = qEnvironmentVariable(variable);
  if (!given.isEmpty())
    return given;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString socket = folder + QStringLiteral("/bus");
  if (folder.isEmpty() || !QFileInfo::exists(socket))
    return {};
  return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(socket, "/"));
}

// Both Qt and the D-Bus library keep the answer to the first question for the bus. Programs that we
// start find the environment as it was.
void makeSessionBusUnreachable() {
  const bool given = qEnvironmentVariableIsSet(variable);
  const QByteArray before = qgetenv(variable);
  qputenv(variable, "unix:path=/dev/null");
  QDBusConnection::sessionBus();
  if (given)
    qputenv(variable, before);
  else
    qunsetenv(variable);
}

bool decide() {
  const QString address = sessionBusAddress();
  const bool usable = !address.isEmpty() && busAnswers(address, Deadline::in(probeSeconds));
  if (!usable)
    makeSessionBusUnreachable();
  return usable;
}

}  // namespace

bool sessionBusIsUsable() {
  static const bool usable = decide();
  return usable;
}

QDBusConnection connectToSessionBus(const QString& connectionName) {
  // Where the bus is not usable there is no connection of any name.
  if (!sessionBusIsUsable())
    return QDBusConnection(connectionName);
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
}

}  // namespace tavin::desktop
