#pragma once

#include <memory>

#include "platform/SystemLog.h"
#include "platform/copy/CopyKey.h"
#include "platform/session/Survey.h"

namespace tavin::gnome {
class HeldModifiers;
}

namespace tavin::session {

// The key that the RemoteDesktop portal types. The compositor adds what the user holds down to it,
// so each desktop's way to know that comes with it. Null on a KWin that tells it to nobody and
// releases nothing, with a line in the log. Arguments as of createCapture().
std::unique_ptr<copy::CopyKey> createPortalKey(
    const Survey& survey, SystemLog& log, const std::shared_ptr<gnome::HeldModifiers>& modifiers);

}  // namespace tavin::session
