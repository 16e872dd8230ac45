#include "platform/x11/Capture.h"

#include "platform/atspi/AtspiAccessibility.h"
#include "platform/x11/X11Keyboard.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11WindowSystem.h"

namespace tavin::x11 {
namespace {

constexpr double secondsForHandOver = 0.5;

}  // namespace

std::optional<Capture> createCapture(SystemLog& log) {
  std::shared_ptr<ClipboardServer> clipboard = ClipboardServer::create();
  auto clipboardReader = SelectionReader::create();
  auto primaryReader = SelectionReader::create();
  if (!clipboard || !clipboardReader || !primaryReader)
    return std::nullopt;
  auto windows =
      std::make_unique<X11WindowSystem>(std::move(primaryReader), PrimaryWatch::create());
  X11WindowSystem* const menuWaiter = windows.get();
  const auto tracker = std::make_shared<atspi::FocusTracker>(std::move(windows));
  auto keyboard = X11Keyboard::create([tracker] { return tracker->mayReceiveCopy(); });
  if (!keyboard)
    return std::nullopt;
  const bool canType = keyboard->canType();

  Capture capture;
  capture.accessibility =
      std::make_unique<atspi::AtspiAccessibility>(tracker, log, [canType] { return canType; });
  capture.keyboard = std::move(keyboard);
  capture.pasteboard = std::make_unique<X11Pasteboard>(std::move(clipboardReader), clipboard);
  capture.menuCommandChosen = [tracker, menuWaiter] { menuWaiter->menuCommandChosen(); };
  capture.handOverClipboard = [clipboard] {
    clipboard->handOver(Deadline::in(secondsForHandOver));
  };
  return capture;
}

}  // namespace tavin::x11
