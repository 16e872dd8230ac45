#pragma once

#include <QStringList>
#include <optional>

namespace tavin::desktop {

// The command, as absolute path and arguments, that opens the running desktop's accessibility
// settings. None where the desktop is another one or its program is not installed.
std::optional<QStringList> accessibilitySettingsCommand();

}  // namespace tavin::desktop
