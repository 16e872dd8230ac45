#include "platform/portal/PortalKeyboard.h"

namespace tavin::portal {

bool PortalKeyboard::isPermitted() {
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

// What is held comes last, right before the keys are typed.
bool PortalKeyboard::prepare() { return chord_.lookUp(keymap_()) && heldModifiers() == 0; }

void PortalKeyboard::type() {
  desktop_->type(*session_, copy::copyChord(chord_.keys(), modifiers_.released));
}

}  // namespace tavin::portal
