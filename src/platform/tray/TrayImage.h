#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace tavin::tray {

// A picture as panels take it.
struct IconPixmap {  // (iiay): ARGB, 32 bits, network byte order, rows from the top.
  int width = 0;
  int height = 0;
  QByteArray pixels;

  bool operator==(const IconPixmap&) const = default;
};

// The icon of a symbol, in the forms that panels ask for, and what it says.
struct TrayImage {
  QString iconName;  // In the icon theme, for panels that recolour it. Empty for an unknown symbol.
  QList<IconPixmap> pixmaps;  // For all others, seen on any colour.
  QString state;              // In the user's language.
};

// `symbolName` is "waveform" or "waveform.circle.fill".
TrayImage trayImage(const QString& symbolName);

// Where our icons are when the desktop's theme does not have them: the folder beside the running
// program. Empty where it does not exist.
QString iconThemePath();

}  // namespace tavin::tray
