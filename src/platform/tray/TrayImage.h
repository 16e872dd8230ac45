#pragma once

#include <QImage>
#include <QString>
#include <vector>

namespace tavin::tray {

// The icon of a symbol, in the forms that panels ask for, and what it says.
struct TrayImage {
  QString iconName;  // In the icon theme, for panels that recolour it. Empty for an unknown symbol.
  std::vector<QImage> pixmaps;  // For all others, seen on any colour.
  QString state;                // In the user's language.
};

// `symbolName` is "waveform" or "waveform.circle.fill". Needs a GUI application.
TrayImage trayImage(const QString& symbolName);

// The program's own icon, for its windows: the same where no theme has it.
QImage programImage(int size);

// Where our icons are when the desktop's theme does not have them: the folder beside the running
// program. Empty where it does not exist.
QString iconThemePath();

}  // namespace tavin::tray
