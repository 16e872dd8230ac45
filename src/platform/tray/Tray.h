#pragma once

#include <functional>
#include <memory>

#include "platform/StatusItem.h"

namespace tavin {

namespace windowlink {
class WindowProgram;
}
namespace x11 {
class DisplayWatch;
}

// The status item of freedesktop's desktops: a StatusNotifierItem wherever the session has a
// watcher for them, else an icon in an old-style tray, while there is one on `display`, which is
// null where there can be none. Works without a session bus. `commandChosen` is called right before
// each command that is chosen in the menu.
std::unique_ptr<StatusItem> createStatusItem(std::function<void()> commandChosen,
                                             std::shared_ptr<windowlink::WindowProgram> program,
                                             std::shared_ptr<x11::DisplayWatch> display);

}  // namespace tavin
