#include "platform/capture/AssembleCapture.h"

#include <utility>

#include "platform/capture/AtspiAccessibility.h"
#include "platform/copy/GuardedPasteboard.h"
#include "platform/copy/NoKeyboard.h"

namespace tavin::capture {

Capture assembleCapture(SystemLog& log, CaptureParts parts) {
  const auto tracker = std::make_shared<FocusTracker>(std::move(parts.windows));
  auto keyboard = parts.makeKeyboard([tracker] { return tracker->mayReceiveCopy(); });
  const bool canType = keyboard != nullptr;
  if (!canType)
    keyboard = std::make_unique<copy::NoKeyboard>();

  Capture capture;
  capture.accessibility =
      std::make_unique<AtspiAccessibility>(tracker, log, [canType] { return canType; });
  capture.clipboard = std::move(parts.clipboard);
  // A copy that began while the process ends would stay in the clipboard.
  capture.clipboard.handOver = [&keyboard = *keyboard,
                                handOver = std::move(capture.clipboard.handOver)] {
    keyboard.close();
    handOver();
  };
  capture.clipboard.pasteboard =
      std::make_unique<copy::GuardedPasteboard>(std::move(capture.clipboard.pasteboard), *keyboard);
  capture.keyboard = std::move(keyboard);
  capture.menuCommandChosen = [tracker] { tracker->windows().menuCommandChosen(); };
  return capture;
}

}  // namespace tavin::capture
