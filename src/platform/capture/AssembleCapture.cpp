#include "platform/capture/AssembleCapture.h"

#include <utility>

#include "platform/capture/AtspiAccessibility.h"
#include "platform/copy/GuardedPasteboard.h"

namespace tavin::capture {

Capture assembleCapture(SystemLog& log, const QDBusConnection& bus, CaptureParts parts) {
  const auto tracker = std::make_shared<FocusTracker>(std::move(parts.windows), bus);
  auto keyboard = std::make_unique<copy::CopyKeyboard>(
      std::move(parts.key), [tracker] { return tracker->mayReceiveCopy(); });

  Capture capture;
  capture.accessibility =
      std::make_unique<AtspiAccessibility>(tracker, bus, log, keyboard->canType());
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
