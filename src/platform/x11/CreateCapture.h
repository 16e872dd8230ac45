#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/copy/Clipboard.h"
#include "platform/copy/CopyKeyboard.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::x11 {

// None or null without an X display.
std::optional<copy::Clipboard> createClipboard();
std::unique_ptr<windows::WindowSystem> createWindowSystem();
// Null where the display lets nobody type, too.
std::unique_ptr<copy::CopyKeyboard> createKeyboard(std::function<bool()> mayCopy);

}  // namespace tavin::x11
