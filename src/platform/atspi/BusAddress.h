#pragma once

#include <QString>

#include "platform/Deadline.h"

namespace tavin::atspi {

// Where the session's accessibility bus listens; empty where it has none or does not tell in time.
QString busAddress(Deadline deadline);

// Whether a bus answers there within the time. The D-Bus library itself would wait for a bus that
// hangs for half a minute, and every other connection of the process with it.
bool busAnswers(const QString& address, Deadline deadline);

}  // namespace tavin::atspi
