#include "platform/portal/PortalKeyboard.h"

#include <utility>

namespace tavin::portal {

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

void PortalKeyboard::typeChord() {
  desktop_->type(*session_, copy::copyChord(modifiers_.released));
}

}  // namespace tavin::portal
