#pragma once

#include <QString>
#include <optional>

#include "platform/atspi/FocusTracker.h"

namespace tavin::atspi {

// The text that is selected in what has the keyboard, or none where that cannot be told. Bounded
// by 1.5 s. The text of a password field is never read.
std::optional<QString> selectedText(FocusTracker& tracker, const Focus& focus);

}  // namespace tavin::atspi
