#pragma once

#include <functional>
#include <memory>

#include "platform/SystemLog.h"
#include "platform/capture/Capture.h"
#include "platform/copy/CopyKeyboard.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::capture {

// Makes the keyboard of a capture; `mayCopy` tells whether the program in front may get the keys.
// Null where there is none: then nothing is ever copied.
using KeyboardMaker =
    std::function<std::unique_ptr<copy::CopyKeyboard>(std::function<bool()> mayCopy)>;

// What differs between the window systems. All must be there.
struct CaptureParts {
  std::unique_ptr<windows::WindowSystem> windows;
  copy::Clipboard clipboard;
  KeyboardMaker makeKeyboard;
};

// Puts them together with accessibility. `log` must outlive it. Needs the QCoreApplication.
Capture assembleCapture(SystemLog& log, CaptureParts parts);

}  // namespace tavin::capture
