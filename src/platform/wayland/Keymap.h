#pragma once

#include <string>

#include "platform/Deadline.h"

namespace tavin::wayland {

// What the user's keyboard puts on each key, as the compositor gives it to every program: a text in
// the format of XKB. Empty where there is no compositor, no keyboard, or no answer in time. Main
// thread.
std::string readKeymap(Deadline deadline);

}  // namespace tavin::wayland
