#include "platform/atspi/Switch.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include "platform/atspi/Object.h"
#include "platform/bus/SessionBus.h"

namespace tavin::atspi {
namespace {

const QString switchName = QStringLiteral("org.a11y.Bus");
constexpr const char* enabled = "IsEnabled";

QDBusMessage askProperties(const QDBusConnection& bus, const char* member, const char* property,
                           QVariantList arguments, Deadline deadline) {
  auto message = QDBusMessage::createMethodCall(switchName, "/org/a11y/bus",
                                                "org.freedesktop.DBus.Properties", member);
  arguments.prepend(QString::fromLatin1(property));
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

SwitchState readSwitch(const QDBusConnection& bus, Deadline deadline) {
  if (!bus.isConnected())
    return SwitchState::missing;
  const auto answer = askProperties(bus, "Get", enabled, {}, deadline);
  if (!isAnswer(answer))
    return isLateAnswer(answer) ? SwitchState::late : SwitchState::missing;
  return valueIn(answer).toBool() ? SwitchState::on : SwitchState::off;
}

QString switchOwner(const QDBusConnection& bus, Deadline deadline) {
  return bus::askBusDaemon(bus, QStringLiteral("GetNameOwner"), switchName, deadline).toString();
}

bool turnSwitchOn(const QDBusConnection& bus, Deadline deadline) {
  askProperties(bus, "Set", enabled, {QVariant::fromValue(QDBusVariant(true))}, deadline);
  return readSwitch(bus, deadline) == SwitchState::on;
}

bool screenReaderRuns(const QDBusConnection& bus, Deadline deadline) {
  const auto answer = askProperties(bus, "Get", "ScreenReaderEnabled", {}, deadline);
  return isAnswer(answer) && valueIn(answer).toBool();
}

}  // namespace tavin::atspi
