#include "platform/gnome/InputClock.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingReply>

namespace tavin::gnome {

QDBusPendingCall askIdleTime(const QDBusConnection& bus, std::chrono::milliseconds deadline) {
  const QString monitor = QStringLiteral("org.gnome.Mutter.IdleMonitor");
  const auto question =
      QDBusMessage::createMethodCall(monitor, QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
                                     monitor, QStringLiteral("GetIdletime"));
  return bus.asyncCall(question, static_cast<int>(deadline.count()));
}

InputTime lastInput(Clock::time_point asked, const QDBusPendingCall& answer) {
  const auto now = Clock::now();
  const QDBusPendingReply<qulonglong> idle = answer;
  if (idle.isError())
    return {idle.error().type() == QDBusError::NoReply ? Clock::time_point() : now, now};
  const std::chrono::milliseconds ago(idle.value());  // Rounded down.
  return {asked - ago - std::chrono::milliseconds(1), now - ago};
}

}  // namespace tavin::gnome
