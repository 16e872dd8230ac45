#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Capture.h"
#include "platform/atspi/WindowSystem.h"
#include "platform/desktop/CopyKeyboard.h"

namespace tavin::x11 {

// None or null without an X display.
std::optional<Clipboard> createClipboard();
std::unique_ptr<atspi::WindowSystem> createWindowSystem();
// Null where the display lets nobody type, too.
std::unique_ptr<desktop::CopyKeyboard> createKeyboard(std::function<bool()> mayCopy);

}  // namespace tavin::x11
