#pragma once

#include <memory>
#include <optional>

#include "platform/copy/Clipboard.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::x11 {

// None or null without an X display.
std::optional<copy::Clipboard> createClipboard();
std::unique_ptr<windows::WindowSystem> createWindowSystem();

}  // namespace tavin::x11
