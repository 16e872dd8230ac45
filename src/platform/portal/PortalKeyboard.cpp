#include "platform/portal/PortalKeyboard.h"

#include <linux/input-event-codes.h>

#include <utility>

namespace tavin::portal {
namespace {

constexpr int modifierKeys[] = {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL,
                                KEY_LEFTALT,   KEY_RIGHTALT,   KEY_LEFTMETA, KEY_RIGHTMETA};

std::vector<KeyStep> copyChord(bool releaseFirst) {
  std::vector<KeyStep> steps;
  if (releaseFirst) {
    for (const int key : modifierKeys) steps.push_back({key, false});
  }
  steps.insert(
      steps.end(),
      {{KEY_LEFTCTRL, true}, {KEY_INSERT, true}, {KEY_INSERT, false}, {KEY_LEFTCTRL, false}});
  return steps;
}

}  // namespace

PortalKeyboard::PortalKeyboard(std::shared_ptr<RemoteDesktop> desktop,
                               std::function<bool()> mayCopy, ModifierHabits modifiers)
    : CopyKeyboard(std::move(mayCopy)),
      desktop_(std::move(desktop)),
      modifiers_(std::move(modifiers)) {}

std::uint64_t PortalKeyboard::flagsState() { return modifiers_.held ? modifiers_.held() : 0; }

bool PortalKeyboard::isReady() {
  if (!CopyKeyboard::isReady())
    return false;  // And nobody is asked for leave.
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

void PortalKeyboard::typeChord() { desktop_->type(*session_, copyChord(modifiers_.released)); }

}  // namespace tavin::portal
