#pragma once

#include <QCoreApplication>
#include <QString>

#include "platform/shortcuts/KeyCombination.h"

namespace tavin::shortcuts {

// The name of what a combination does, for desktops that show it or run it: the shortcut that
// pauses is always the one that speaks with Shift added.
inline const QString speakAction = QStringLiteral("speak");
inline const QString pauseAction = QStringLiteral("pause");

inline QString actionOf(const KeyCombination& combination) {
  return combination.has(KeyCombination::shift) ? pauseAction : speakAction;
}

// The same for the user's eye.
inline QString titleOf(const KeyCombination& combination) {
  return combination.has(KeyCombination::shift)
             ? QCoreApplication::translate("Shortcut", "Pause or Resume")
             : QCoreApplication::translate("Shortcut", "Speak Selection or Stop");
}

// Where the desktop shows it without the program's name.
inline QString fullTitleOf(const KeyCombination& combination) {
  return QStringLiteral("Tavin: ") + titleOf(combination);
}

}  // namespace tavin::shortcuts
