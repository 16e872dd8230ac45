#include "platform/capture/AtspiAccessibility.h"

#include <utility>

#include "platform/atspi/Switch.h"
#include "platform/capture/SelectedText.h"

namespace tavin::capture {
namespace {

using namespace atspi;

// Asking may start the service, which takes longer than an answer.
constexpr double secondsForSwitch = 0.5;

class FocusedElement final : public UIElement {
 public:
  FocusedElement(std::shared_ptr<FocusTracker> tracker, Focus focus)
      : tracker_(std::move(tracker)), focus_(std::move(focus)) {}

  void setMessagingTimeout(float seconds) override { tracker_->bus().setMessageSeconds(seconds); }
  std::optional<AttributeValue> copyAttributeValue(const QString& attribute) override {
    if (attribute != "AXSelectedText")
      return std::nullopt;
    const auto text = selectedText(*tracker_, focus_);
    return text ? std::optional<AttributeValue>(*text) : std::nullopt;
  }

 private:
  const std::shared_ptr<FocusTracker> tracker_;
  const Focus focus_;
};

class SystemWideElement final : public UIElement {
 public:
  explicit SystemWideElement(std::shared_ptr<FocusTracker> tracker)
      : tracker_(std::move(tracker)) {}

  void setMessagingTimeout(float seconds) override { tracker_->bus().setMessageSeconds(seconds); }
  std::optional<AttributeValue> copyAttributeValue(const QString& attribute) override {
    if (attribute != "AXFocusedUIElement")
      return std::nullopt;
    Focus focus = tracker_->look();
    if (focus.window.id == 0)
      return std::nullopt;
    return AttributeValue(
        std::shared_ptr<UIElement>(std::make_shared<FocusedElement>(tracker_, std::move(focus))));
  }

 private:
  const std::shared_ptr<FocusTracker> tracker_;
};

}  // namespace

AtspiAccessibility::AtspiAccessibility(std::shared_ptr<FocusTracker> tracker,
                                       const QDBusConnection& bus, SystemLog& log, bool canCopy,
                                       std::function<void()> captureBegins)
    : tracker_(std::move(tracker)),
      bus_(bus),
      log_(log),
      canCopy_(canCopy),
      captureBegins_(std::move(captureBegins)) {}

bool AtspiAccessibility::isProcessTrusted(bool prompt) {
  const Deadline deadline = Deadline::in(secondsForSwitch);
  const auto [state, screenReader] = readSwitches(bus_, deadline);
  if (state == SwitchState::missing)
    return canCopy_;
  if (state == SwitchState::late)
    return isTrustedWhileLate(prompt);
  bool on = state == SwitchState::on;
  if (!on && prompt)
    on = turnOn("Tavin: switched accessibility on for this session (org.a11y.Status IsEnabled)");
  else if (!on && wasOn_ && mayTurnOnAgain(deadline))
    on = turnOn("Tavin: accessibility was off; switched it on again");
  wasOn_ = on;
  if (screenReader)
    tellOfScreenReader();
  if (on)
    tracker_->bus().connect(deadline);  // From now on a listener is registered, which keeps it on.
  return on;
}

// What was on counts as on: the bus that selections come through is another process, and every
// question to it has a deadline of its own. Otherwise nothing is known, and a copy would be a
// guess.
bool AtspiAccessibility::isTrustedWhileLate(bool prompt) {
  if (!wasOn_ && prompt) {
    log_.write("Tavin: the accessibility service is late; asked it to switch accessibility on");
    wasOn_ = turnSwitchOn(bus_, Deadline::in(secondsForSwitch));
  }
  return wasOn_;
}

bool AtspiAccessibility::mayTurnOnAgain(Deadline deadline) {
  const QString owner = switchOwner(bus_, deadline);
  const std::lock_guard lock(mutex_);
  return std::exchange(turnedOnAgain_, owner) != owner;
}

bool AtspiAccessibility::turnOn(const char* reason) {
  if (!turnSwitchOn(bus_, Deadline::in(secondsForSwitch)))
    return false;
  log_.write(reason);
  return true;
}

void AtspiAccessibility::tellOfScreenReader() {
  if (toldOfScreenReader_.exchange(true))
    return;
  log_.write(
      "Tavin: a screen reader is switched on; both will speak at once. Orca's modifier key with S "
      "mutes Orca (man tavin, SCREEN READERS)");
}

std::shared_ptr<UIElement> AtspiAccessibility::createSystemWideElement() {
  captureBegins_();
  return std::make_shared<SystemWideElement>(tracker_);
}

}  // namespace tavin::capture
