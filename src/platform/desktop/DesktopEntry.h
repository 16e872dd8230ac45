#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace tavin::desktop {

// The "[Desktop Entry]" group of a desktop file: keys and values as they stand, still escaped.
// Reads anything; what is no entry is passed over.
QHash<QByteArray, QByteArray> parseDesktopEntry(const QByteArray& file);

// A value of type string, escaped as freedesktop's Desktop Entry Specification wants it.
QByteArray desktopEntryString(const QString& text);

// One argument of an Exec key that reaches the program exactly as it is.
QByteArray desktopEntryExecArgument(const QString& argument);

}  // namespace tavin::desktop
