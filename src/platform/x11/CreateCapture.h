#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Capture.h"
#include "platform/SystemLog.h"
#include "platform/atspi/WindowSystem.h"

namespace tavin::x11 {

// None or null without an X display.
std::optional<Clipboard> createClipboard();
std::unique_ptr<atspi::WindowSystem> createWindowSystem();
// Null where the display lets nobody type, too.
std::unique_ptr<Keyboard> createKeyboard(std::function<bool()> mayCopy);

// The three, put together with accessibility. `log` must outlive it. Needs the QCoreApplication.
std::optional<Capture> createCapture(SystemLog& log);

}  // namespace tavin::x11
