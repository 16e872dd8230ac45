#pragma once

#include <functional>
#include <memory>

#include "platform/StatusItem.h"

namespace tavin {

// The status item of freedesktop's desktops: a StatusNotifierItem wherever the session has a
// watcher for them, else an icon in an XEmbed tray. Needs a QApplication; works without a session
// bus. `commandChosen` is called right before each command that is chosen in the menu.
std::unique_ptr<StatusItem> createStatusItem(std::function<void()> commandChosen);

}  // namespace tavin
