#pragma once

#include "platform/Deadline.h"

namespace tavin::atspi {

// The session's switch for accessibility.
enum class SwitchState { on, off, missing };  // Missing: no session bus, or no such service on it.

SwitchState readSwitch(Deadline deadline);
// Whether it is on afterwards. The screen reader's own switch is another one and stays as it is.
bool turnSwitchOn(Deadline deadline);

}  // namespace tavin::atspi
