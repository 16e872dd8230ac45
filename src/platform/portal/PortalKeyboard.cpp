#include "platform/portal/PortalKeyboard.h"

namespace tavin::portal {

bool PortalKeyboard::isPermitted() {
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

// What is held comes last, right before the keys are typed.
bool PortalKeyboard::prepare() {
  const auto keys = copy::chordKeysIn(keymap_());
  keys_ = keys.value_or(keys_);
  return keys.has_value() && heldModifiers() == 0;
}

void PortalKeyboard::type() {
  desktop_->type(*session_, copy::copyChord(keys_, modifiers_.released));
}

}  // namespace tavin::portal
