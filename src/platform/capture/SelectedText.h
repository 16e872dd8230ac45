#pragma once

#include <QString>
#include <optional>

#include "platform/capture/FocusTracker.h"

namespace tavin::capture {

// The text that is selected in what has the keyboard, or none where that cannot be told. Bounded
// by 1.5 s. The text of a password field is never read.
std::optional<QString> selectedText(FocusTracker& tracker, const Focus& focus);

}  // namespace tavin::capture
