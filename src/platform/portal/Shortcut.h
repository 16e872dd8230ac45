#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>
#include <optional>

#include "platform/shortcuts/KeyCombination.h"

namespace tavin::portal {

// A shortcut as the GlobalShortcuts portal writes it.
struct Shortcut {
  QString id;
  QVariantMap properties;

  // The key that the desktop gave it, in its words; empty where it gave none.
  QString trigger() const;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Shortcut& shortcut);
const QDBusArgument& operator>>(const QDBusArgument& argument, Shortcut& shortcut);

// What we ask for: an id of its own for each combination, since a desktop keeps the key that an id
// had once. The key in the ANSI "R" position is taken for R.
Shortcut wantedShortcut(const shortcuts::KeyCombination& combination);

// For a message's arguments.
QVariant toArgument(const QList<Shortcut>& shortcuts);
// The shortcuts among an answer's results; none where it has no such list.
std::optional<QList<Shortcut>> shortcutsIn(const QVariantMap& results);

}  // namespace tavin::portal
