#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/gnome/Accelerator.h"

namespace tavin::gnome {

// Who holds a combination in GNOME's settings: the window manager, the shell, the media keys,
// another custom key binding or an extension that is switched on. GNOME itself would leave the key
// with that one and tell nobody. `ours` are the paths of our own custom key bindings. In words for
// the log; none where the combination is free. Main thread.
std::optional<QString> holderOf(const BothAccelerators& combination, const QStringList& ours);

}  // namespace tavin::gnome
