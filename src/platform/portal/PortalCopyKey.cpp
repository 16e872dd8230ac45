#include "platform/portal/PortalCopyKey.h"

namespace tavin::portal {

bool PortalCopyKey::isPermitted() {
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

// What is held comes last, right before the keys are typed.
bool PortalCopyKey::prepare() { return chord_.lookUp(keymap_()) && heldModifiers() == 0; }

void PortalCopyKey::type() {
  desktop_->type(*session_, copy::copyChord(chord_.keys(), modifiers_.released));
}

}  // namespace tavin::portal
