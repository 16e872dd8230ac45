#pragma once

#include <QDBusConnection>
#include <QString>

#include "platform/Deadline.h"

namespace tavin::atspi {

// Where the session's accessibility bus listens, as its own `bus` tells; empty where it has none or
// does not tell in time.
QString busAddress(const QDBusConnection& bus, Deadline deadline);

}  // namespace tavin::atspi
