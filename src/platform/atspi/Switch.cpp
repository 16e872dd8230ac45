#include "platform/atspi/Switch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include "platform/atspi/Object.h"
#include "platform/bus/SessionBus.h"

namespace tavin::atspi {
namespace {

const QString switchName = QStringLiteral("org.a11y.Bus");

QDBusMessage askProperties(const char* member, QVariantList arguments, Deadline deadline) {
  auto message = QDBusMessage::createMethodCall(switchName, "/org/a11y/bus",
                                                "org.freedesktop.DBus.Properties", member);
  arguments.prepend(QString("IsEnabled"));
  arguments.prepend(QString("org.a11y.Status"));
  message.setArguments(arguments);
  return QDBusConnection::sessionBus().call(message, QDBus::Block, deadline.remainingMs());
}

// The bus has its own words for a service whose start takes too long.
bool isLateAnswer(const QDBusMessage& answer) {
  return isLate(answer) || answer.errorName() == "org.freedesktop.DBus.Error.Timeout" ||
         answer.errorName() == "org.freedesktop.DBus.Error.TimedOut";
}

}  // namespace

SwitchState readSwitch(Deadline deadline) {
  if (!bus::sessionBusIsUsable() || !QDBusConnection::sessionBus().isConnected())
    return SwitchState::missing;
  const auto answer = askProperties("Get", {}, deadline);
  if (!isAnswer(answer))
    return isLateAnswer(answer) ? SwitchState::late : SwitchState::missing;
  return valueIn(answer).toBool() ? SwitchState::on : SwitchState::off;
}

QString switchOwner(Deadline deadline) {
  return bus::askBusDaemon(QDBusConnection::sessionBus(), QStringLiteral("GetNameOwner"),
                           switchName, deadline)
      .toString();
}

bool turnSwitchOn(Deadline deadline) {
  if (!bus::sessionBusIsUsable())
    return false;
  askProperties("Set", {QVariant::fromValue(QDBusVariant(true))}, deadline);
  return readSwitch(deadline) == SwitchState::on;
}

}  // namespace tavin::atspi
