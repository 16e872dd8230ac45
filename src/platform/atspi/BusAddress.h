#pragma once

#include <QString>

#include "platform/Deadline.h"

namespace tavin::atspi {

// Where the session's accessibility bus listens; empty where it has none or does not tell in time.
QString busAddress(Deadline deadline);

}  // namespace tavin::atspi
