#include "platform/capture/AssembleCapture.h"

#include <utility>

#include "platform/Deadline.h"
#include "platform/capture/AtspiAccessibility.h"
#include "platform/copy/GuardedPasteboard.h"

namespace tavin::capture {
namespace {

constexpr double secondsForAnswer = 0.5;

}  // namespace

Capture assembleCapture(SystemLog& log, const QDBusConnection& bus, CaptureParts parts) {
  const auto tracker = std::make_shared<FocusTracker>(std::move(parts.windows), bus);
  auto keyboard = std::make_unique<copy::CopyKeyboard>(
      std::move(parts.key), [tracker] { return tracker->mayReceiveCopy(); });

  auto pasteboard =
      std::make_unique<copy::GuardedPasteboard>(std::move(parts.clipboard.pasteboard), *keyboard);

  Capture capture;
  capture.accessibility = std::make_unique<AtspiAccessibility>(
      tracker, bus, log, keyboard->canType(),
      [&pasteboard = *pasteboard] { pasteboard.captureBegins(); });
  capture.shortcutArrived = [&pasteboard = *pasteboard] { pasteboard.shortcutArrived(); };
  capture.handOver = [&keyboard = *keyboard, &pasteboard = *pasteboard,
                      handOver = std::move(parts.clipboard.handOver)] {
    keyboard.close();
    pasteboard.finish(Deadline::in(secondsForAnswer));
    handOver();
  };
  capture.pasteboard = std::move(pasteboard);
  capture.keyboard = std::move(keyboard);
  capture.menuCommandChosen = [tracker] { tracker->windows().menuCommandChosen(); };
  return capture;
}

}  // namespace tavin::capture
