#include "platform/LateHotkeys.h"

#include <algorithm>
#include <utility>

namespace tavin {

struct LateHotkeys::HotKey final : EventHotKey {
  std::uint32_t keyCode = 0;
  std::uint32_t modifiers = 0;
  EventHotKeyID id;
  EventHotKeyRef theirs;  // Null where the service has not granted it, and never will.
};

LateHotkeys::LateHotkeys(QString reason, Choose choose)
    : reason_(std::move(reason)),
      watch_(QDBusConnection::sessionBus(),
             [this, choose = std::move(choose)](const QString& shellVersion) {
               become(choose(shellVersion));
             }) {}

LateHotkeys::~LateHotkeys() = default;

void LateHotkeys::become(ChosenHotkeys chosen) {
  chosen_ = std::move(chosen);
  chosen_.service->installEventHandler([this](EventHotKeyID id) { tellPress(id); });
  chosen_.service->installAnswerHandler(
      [this](const HotkeyRegistration& theirs) { answer(theirs); });
  for (const auto& hotKey : std::vector(hotKeys_)) {
    tellAnswer(registerNow(hotKey));
  }
}

HotkeyRegistration LateHotkeys::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    EventHotKeyID id) {
  auto hotKey = std::make_shared<HotKey>();
  hotKey->keyCode = keyCode;
  hotKey->modifiers = modifiers;
  hotKey->id = id;
  if (!chosen_.service) {
    hotKeys_.push_back(hotKey);
    return HotkeyRegistration::refused(reason_, hotKey);
  }
  HotkeyRegistration result = registerNow(hotKey);
  if (hotKey->theirs)
    hotKeys_.push_back(hotKey);
  else
    result.ref = nullptr;  // No answer will come.
  return result;
}

void LateHotkeys::unregisterEventHotKey(const EventHotKeyRef& ref) {
  const auto found = std::ranges::find(hotKeys_, ref);
  if (found == hotKeys_.end())
    return;
  if (const auto theirs = (*found)->theirs)
    chosen_.service->unregisterEventHotKey(theirs);
  hotKeys_.erase(found);
}

void LateHotkeys::release() {
  if (chosen_.release)
    chosen_.release();
}

HotkeyRegistration LateHotkeys::registerNow(const std::shared_ptr<HotKey>& hotKey) {
  HotkeyRegistration result =
      chosen_.service->registerEventHotKey(hotKey->keyCode, hotKey->modifiers, hotKey->id);
  hotKey->theirs = std::exchange(result.ref, hotKey);
  return result;
}

void LateHotkeys::answer(const HotkeyRegistration& theirs) {
  const auto found =
      std::ranges::find(hotKeys_, theirs.ref, [](const auto& hotKey) { return hotKey->theirs; });
  if (found == hotKeys_.end())
    return;
  HotkeyRegistration ours = theirs;
  ours.ref = *found;
  tellAnswer(ours);
}

}  // namespace tavin
