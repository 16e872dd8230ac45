#include "platform/shortcuts/RegisteredHotkeys.h"

#include <algorithm>
#include <utility>

namespace tavin::shortcuts {
namespace {

HotkeyRegistration registration(const Answer& answer, EventHotKeyRef ref) {
  const bool granted = answer.state == HotkeyState::granted;
  return {.state = answer.state,
          .status = granted ? 0 : answer.number,
          .ref = std::move(ref),
          .reason = answer.reason};
}

}  // namespace

struct RegisteredHotkeys::HotKey final : EventHotKey {
  EventHotKeyID id;
};

RegisteredHotkeys::RegisteredHotkeys(std::unique_ptr<Service> service,
                                     std::function<void()> arrived)
    : arrived_(std::move(arrived)), service_(std::move(service)) {
  service_->tell([this](const KeyCombination& combination) { tellPress(combination); },
                 [this](const KeyCombination& combination, const Answer& answer) {
                   tellAnswer(combination, answer);
                 });
}

RegisteredHotkeys::~RegisteredHotkeys() = default;

std::int32_t RegisteredHotkeys::installEventHandler(std::function<void(EventHotKeyID)> callback) {
  pressed_ = std::move(callback);
  return 0;
}

void RegisteredHotkeys::installAnswerHandler(
    std::function<void(const HotkeyRegistration&)> callback) {
  answered_ = std::move(callback);
}

HotkeyRegistration RegisteredHotkeys::registerEventHotKey(std::uint32_t keyCode,
                                                          std::uint32_t modifiers,
                                                          EventHotKeyID id) {
  const auto combination = KeyCombination::of(keyCode, modifiers);
  if (!combination)
    return HotkeyRegistration::refused(QStringLiteral("no shortcut of Tavin's has such a key"));
  // Desktops grant the same program the same combination twice.
  if (hotKeys_.contains(*combination))
    return HotkeyRegistration::refused(QStringLiteral("Tavin itself holds the combination"));
  const Answer answer = service_->add(*combination);
  if (answer.state == HotkeyState::refused)
    return registration(answer, nullptr);
  const auto hotKey = std::make_shared<HotKey>();
  hotKey->id = id;
  hotKeys_.emplace(*combination, hotKey);
  return registration(answer, hotKey);
}

void RegisteredHotkeys::unregisterEventHotKey(const EventHotKeyRef& ref) {
  const auto found =
      std::ranges::find_if(hotKeys_, [&ref](const auto& each) { return each.second == ref; });
  if (found == hotKeys_.end())
    return;
  service_->remove(found->first);
  hotKeys_.erase(found);
}

void RegisteredHotkeys::tellPress(const KeyCombination& combination) const {
  const auto found = hotKeys_.find(combination);
  if (found == hotKeys_.end() || !pressed_)
    return;
  arrived_();
  pressed_(found->second->id);
}

void RegisteredHotkeys::tellAnswer(const KeyCombination& combination, const Answer& answer) const {
  const auto found = hotKeys_.find(combination);
  if (found != hotKeys_.end() && answered_)
    answered_(registration(answer, found->second));
}

}  // namespace tavin::shortcuts
