#pragma once

#include <QStringList>

namespace tavin::desktop {

// The names of the running desktop, the most particular first, such as "ubuntu", "GNOME". Empty
// where the session does not say.
inline QStringList currentDesktops() {
  return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

inline bool isGnome(const QStringList& desktops = currentDesktops()) {
  return desktops.contains(QLatin1String("GNOME"), Qt::CaseInsensitive);
}

}  // namespace tavin::desktop
