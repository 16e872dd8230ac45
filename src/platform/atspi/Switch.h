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

struct Switches {
  SwitchState accessibility;
  bool screenReader;  // False where nobody tells in time.
};

// Each asks on `bus`, the session's; this one once for both.
Switches readSwitches(const QDBusConnection& bus, Deadline deadline);
// Who has the switch: another each time the service is started. Empty where nobody tells in time.
QString switchOwner(const QDBusConnection& bus, Deadline deadline);
// Whether it is on afterwards. A service that is late gets the request once it wakes up. The screen
// reader's own switch is another one and stays as it is.
bool turnSwitchOn(const QDBusConnection& bus, Deadline deadline);

}  // namespace tavin::atspi
