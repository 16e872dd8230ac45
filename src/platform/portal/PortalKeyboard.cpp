#include "platform/portal/PortalKeyboard.h"

#include "platform/copy/CopyChord.h"

namespace tavin::portal {

bool PortalKeyboard::isPermitted() {
  session_ = desktop_->sessionOrAsk();
  return session_.has_value();
}

void PortalKeyboard::type() { desktop_->type(*session_, copy::copyChord(modifiers_.released)); }

}  // namespace tavin::portal
