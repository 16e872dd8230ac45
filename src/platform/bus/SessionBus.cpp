#include "platform/bus/SessionBus.h"

#include <QDBusMessage>
#include <QFileInfo>
#include <QUrl>

#include "platform/bus/BusProbe.h"

namespace tavin::bus {
namespace {

constexpr double probeSeconds = 1;

// Empty where the D-Bus library would start a bus, which nobody would ever end.
QString sessionBusAddress() {
  QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!given.isEmpty())
    return given;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString socket = folder + QStringLiteral("/bus");
  if (folder.isEmpty() || !QFileInfo::exists(socket))
    return {};
  return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(socket, "/"));
}

// Takes the name that Qt gives to the bus by default, for a connection that leads nowhere: its own
// uses of the bus find that one. The environment stays as it is, for us and for what we start.
void makeSessionBusUnreachable() {
  static const QDBusConnection nowhere = QDBusConnection::connectToBus(
      QStringLiteral("unix:path=/dev/null"), QStringLiteral("qt_default_session_bus"));
}

bool decide() {
  const QString address = sessionBusAddress();
  const bool usable = !address.isEmpty() && busAnswers(address, Deadline::in(probeSeconds));
  if (!usable)
    makeSessionBusUnreachable();
  return usable;
}

bool isUsable() {
  static const bool usable = decide();
  return usable;
}

// Each is one of a kind, also where one object takes another's place.
QString newName(const QString& purpose) {
  static int count = 0;
  return QStringLiteral("tavin-%1-%2").arg(purpose).arg(++count);
}

}  // namespace

void decideSessionBus() { isUsable(); }

QDBusConnection sessionBus() {
  decideSessionBus();
  return QDBusConnection::sessionBus();
}

OwnConnection::OwnConnection(const QString& purpose)
    : bus_(connectToSessionBus(newName(purpose))) {}

QDBusConnection connectToSessionBus(const QString& connectionName) {
  // Where the bus is not usable there is no connection of any name.
  if (!isUsable())
    return QDBusConnection(connectionName);
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
}

QVariant askBusDaemon(const QDBusConnection& bus, const QString& method, const QString& name,
                      Deadline deadline) {
  const QString daemon = QStringLiteral("org.freedesktop.DBus");
  QDBusMessage question = QDBusMessage::createMethodCall(
      daemon, QStringLiteral("/org/freedesktop/DBus"), daemon, method);
  question << name;
  const QDBusMessage answer = bus.call(question, QDBus::Block, deadline.remainingMs());
  return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

}  // namespace tavin::bus
