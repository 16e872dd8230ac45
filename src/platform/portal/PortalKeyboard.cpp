#include "platform/portal/PortalKeyboard.h"

namespace tavin::portal {

bool PortalKeyboard::isPermitted() {
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

bool PortalKeyboard::prepare() {
  if (heldModifiers() != 0)
    return false;
  const auto keys = copy::chordKeysIn(keymap_());
  keys_ = keys.value_or(keys_);
  return keys.has_value();
}

void PortalKeyboard::type() {
  desktop_->type(*session_, copy::copyChord(keys_, modifiers_.released));
}

}  // namespace tavin::portal
