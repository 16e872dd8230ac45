#include "platform/atspi/AssembleCapture.h"

#include <utility>

#include "platform/atspi/AtspiAccessibility.h"
#include "platform/desktop/NoKeyboard.h"

namespace tavin::atspi {

Capture assembleCapture(SystemLog& log, CaptureParts parts) {
  const auto tracker = std::make_shared<FocusTracker>(std::move(parts.windows));
  auto keyboard = parts.makeKeyboard([tracker] { return tracker->mayReceiveCopy(); });
  const bool canType = keyboard != nullptr;

  Capture capture;
  capture.accessibility =
      std::make_unique<AtspiAccessibility>(tracker, log, [canType] { return canType; });
  capture.keyboard = canType ? std::move(keyboard) : std::make_unique<desktop::NoKeyboard>();
  capture.clipboard = std::move(parts.clipboard);
  capture.menuCommandChosen = [tracker] { tracker->windows().menuCommandChosen(); };
  return capture;
}

}  // namespace tavin::atspi
