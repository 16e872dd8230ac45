#pragma once

#include <functional>
#include <memory>

#include "platform/Capture.h"
#include "platform/SystemLog.h"
#include "platform/atspi/WindowSystem.h"
#include "platform/desktop/CopyKeyboard.h"

namespace tavin::atspi {

// Makes the keyboard of a capture; `mayCopy` tells whether the program in front may get the keys.
// Null where there is none: then nothing is ever copied.
using KeyboardMaker =
    std::function<std::unique_ptr<desktop::CopyKeyboard>(std::function<bool()> mayCopy)>;

// What differs between the window systems. All must be there.
struct CaptureParts {
  std::unique_ptr<WindowSystem> windows;
  Clipboard clipboard;
  KeyboardMaker makeKeyboard;
};

// Puts them together with accessibility. `log` must outlive it. Needs the QCoreApplication.
Capture assembleCapture(SystemLog& log, CaptureParts parts);

}  // namespace tavin::atspi
