#pragma once

#include <QDBusConnection>
#include <QString>

#include "platform/Deadline.h"

namespace tavin::atspi {

// The session's switch for accessibility.
enum class SwitchState {
  on,
  off,
  missing,  // No session bus, or no such service on it.
  late,     // Being started, busy or hanging.
};

// Each asks on `bus`, the session's.
SwitchState readSwitch(const QDBusConnection& bus, Deadline deadline);
// Who has the switch: another each time the service is started. Empty where nobody tells in time.
QString switchOwner(const QDBusConnection& bus, Deadline deadline);
// Whether it is on afterwards. A service that is late gets the request once it wakes up. The screen
// reader's own switch is another one and stays as it is.
bool turnSwitchOn(const QDBusConnection& bus, Deadline deadline);
// Whether the session has a screen reader switched on; false where nobody tells in time.
bool screenReaderRuns(const QDBusConnection& bus, Deadline deadline);

}  // namespace tavin::atspi
