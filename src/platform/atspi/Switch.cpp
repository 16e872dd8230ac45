#include "platform/atspi/Switch.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include "platform/atspi/Object.h"
#include "platform/bus/SessionBus.h"

namespace tavin::atspi {
namespace {

const QString switchName = QStringLiteral("org.a11y.Bus");
const QString enabled = QStringLiteral("IsEnabled");
const QString screenReaderEnabled = QStringLiteral("ScreenReaderEnabled");

QDBusMessage askProperties(const QDBusConnection& bus, const char* member, QVariantList arguments,
                           Deadline deadline) {
  auto message = QDBusMessage::createMethodCall(switchName, "/org/a11y/bus",
                                                "org.freedesktop.DBus.Properties", member);
  arguments.prepend(QString("org.a11y.Status"));
  message.setArguments(arguments);
  return bus.call(message, QDBus::Block, deadline.remainingMs());
}

// The bus has its own words for a service whose start takes too long.
bool isLateAnswer(const QDBusMessage& answer) {
  return isLate(answer) || answer.errorName() == "org.freedesktop.DBus.Error.Timeout" ||
         answer.errorName() == "org.freedesktop.DBus.Error.TimedOut";
}

}  // namespace

Switches readSwitches(const QDBusConnection& bus, Deadline deadline) {
  if (!bus.isConnected())
    return {SwitchState::missing, false};
  const auto answer = askProperties(bus, "GetAll", {}, deadline);
  if (!isAnswer(answer))
    return {isLateAnswer(answer) ? SwitchState::late : SwitchState::missing, false};
  const QVariantMap properties = QDBusReply<QVariantMap>(answer).value();
  return {properties.value(enabled).toBool() ? SwitchState::on : SwitchState::off,
          properties.value(screenReaderEnabled).toBool()};
}

QString switchOwner(const QDBusConnection& bus, Deadline deadline) {
  return bus::askBusDaemon(bus, QStringLiteral("GetNameOwner"), switchName, deadline).toString();
}

bool turnSwitchOn(const QDBusConnection& bus, Deadline deadline) {
  askProperties(bus, "Set", {enabled, QVariant::fromValue(QDBusVariant(true))}, deadline);
  return readSwitches(bus, deadline).accessibility == SwitchState::on;
}

}  // namespace tavin::atspi
