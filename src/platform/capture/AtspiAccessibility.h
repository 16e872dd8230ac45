#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

#include "platform/Accessibility.h"
#include "platform/SystemLog.h"
#include "platform/capture/FocusTracker.h"

namespace tavin::capture {

// Accessibility through AT-SPI: the system-wide element, the focused one, its selected text.
class AtspiAccessibility final : public Accessibility {
 public:
  // `canCopy` is whether synthetic copies can be made at all, which counts where the session has no
  // accessibility. `captureBegins` is called before each look at a selection. `log` must outlive
  // it.
  AtspiAccessibility(std::shared_ptr<FocusTracker> tracker, const QDBusConnection& bus,
                     SystemLog& log, bool canCopy, std::function<void()> captureBegins);

  bool isProcessTrusted(bool prompt) override;
  std::shared_ptr<UIElement> createSystemWideElement() override;

 private:
  bool isTrustedWhileLate(bool prompt);
  // Whoever turns it off twice means it.
  bool mayTurnOnAgain(Deadline deadline);
  bool turnOn(const char* reason);
  // Logs once how to silence a screen reader that is switched on.
  void tellOfScreenReader();

  const std::shared_ptr<FocusTracker> tracker_;
  const QDBusConnection bus_;  // The session's, where the switch is.
  SystemLog& log_;
  const bool canCopy_;
  const std::function<void()> captureBegins_;
  std::atomic<bool> wasOn_ = false;  // When the service last told.
  std::atomic<bool> toldOfScreenReader_ = false;
  std::mutex mutex_;
  QString turnedOnAgain_ = QStringLiteral("never");  // Whose; the next service starts with it off.
};

}  // namespace tavin::capture
