#pragma once

#include <QString>

#include "platform/Deadline.h"

namespace tavin::bus {

// Whether a bus answers at a D-Bus address within the time. The D-Bus library itself would wait
// without end for a bus that hangs, and every other connection of the process with it. Any thread.
bool busAnswers(const QString& address, Deadline deadline);

}  // namespace tavin::bus
