#pragma once

#include <QByteArray>
#include <QString>

namespace tavin {

// The desktop around the program.
class Workspace {
 public:
  virtual ~Workspace() = default;
  // What the catalogues call the running desktop where their words for it differ: "GNOME", "Plasma"
  // or "Xfce"; empty for any other.
  virtual QByteArray desktop() = 0;
  // Opens the file with the user's program for it; a missing file opens nothing. Main thread.
  virtual void openFile(const QString& path) = 0;
  // Whether this desktop has a place where accessibility is switched on. Main thread.
  virtual bool hasAccessibilitySettings() = 0;
  virtual void openAccessibilitySettings() = 0;
  // Any thread; never waits for the sound to end.
  virtual void beep() = 0;
};

}  // namespace tavin
