#include "hotkeys/HotkeyCenter.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/Fatal.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"

namespace tavin {
namespace {

std::uint32_t unsigned32(std::int64_t value) {
  require(value >= 0 && value <= std::numeric_limits<std::uint32_t>::max(),
          "a key code or modifier mask is out of range");
  return static_cast<std::uint32_t>(value);
}

}  // namespace

HotkeyCenter::HotkeyCenter(HotkeyService& service, MainQueue& mainQueue, SystemLog& log)
    : service_(service),
      mainQueue_(mainQueue),
      log_(log),
      handlers_(std::make_shared<std::map<std::uint32_t, Handler>>()) {}

void HotkeyCenter::installOnce() {
  if (installed_)
    return;
  installed_ = true;
  // The handler runs from the queue, after the platform has finished with the key event.
  service_.installEventHandler([this, handlers = handlers_](EventHotKeyID pressed) {
    mainQueue_.async([handlers, id = pressed.id] {
      const auto found = handlers->find(id);
      if (found == handlers->end())
        return;
      const Handler handler = found->second;  // It may register again, which drops the stored one.
      handler();
    });
  });
  service_.installAnswerHandler([this](const HotkeyRegistration& answer) { takeAnswer(answer); });
}

bool HotkeyCenter::registerHotkey(std::int64_t keyCode, std::int64_t modifiers, Handler handler) {
  installOnce();
  const auto id = static_cast<std::uint32_t>(handlers_->size() + 1);
  HotkeyRegistration result = service_.registerEventHotKey(
      unsigned32(keyCode), unsigned32(modifiers), {.signature = signature, .id = id});
  Registration registration{keyCode, modifiers, std::move(result.ref), false};
  registration.active = result.state == HotkeyState::granted && registration.ref;
  const bool active = registration.active;
  if (!active)
    logRefusal(registration, result.status, result.reason);
  if (registration.ref) {
    (*handlers_)[id] = std::move(handler);
    registrations_.push_back(std::move(registration));
  } else {
    anyRefused_ = true;
  }
  return active;
}

void HotkeyCenter::unregisterAll() {
  for (const Registration& each : registrations_) service_.unregisterEventHotKey(each.ref);
  registrations_.clear();
  handlers_->clear();
  anyRefused_ = false;
}

bool HotkeyCenter::allActive() const {
  return !anyRefused_ && std::ranges::all_of(registrations_, &Registration::active);
}

void HotkeyCenter::setAnswerHandler(std::function<void()> answered) {
  answered_ = std::move(answered);
}

void HotkeyCenter::takeAnswer(const HotkeyRegistration& answer) {
  const auto found = std::ranges::find(registrations_, answer.ref, &Registration::ref);
  if (found == registrations_.end())
    return;
  found->active = answer.state == HotkeyState::granted;
  if (found->active)
    log_.write(QStringLiteral("Tavin: hotkey keyCode=%1 modifiers=%2 available")
                   .arg(found->keyCode)
                   .arg(found->modifiers));
  else
    logRefusal(*found, answer.status, answer.reason);
  if (answered_)
    answered_();
}

void HotkeyCenter::logRefusal(const Registration& refused, std::int32_t status,
                              const QString& reason) {
  log_.write(QStringLiteral("Tavin: hotkey keyCode=%1 modifiers=%2 unavailable (%3)")
                 .arg(refused.keyCode)
                 .arg(refused.modifiers)
                 .arg(status));
  if (!reason.isEmpty())
    log_.write(QStringLiteral("Tavin: ") + reason);
}

}  // namespace tavin
