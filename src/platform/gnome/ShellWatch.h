#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QString>
#include <functional>

namespace tavin::gnome {

// The question for GNOME Shell's version, which starts no shell, and what an answer says; empty
// where that is an error.
QDBusMessage shellVersionQuestion();
QString shellVersionIn(const QDBusMessage& answer);

// Waits for a shell that has not come yet, or is too busy to answer while the session starts. Main
// thread only.
class ShellWatch {
 public:
  // Calls `found` once, from the event loop, with its version.
  ShellWatch(const QDBusConnection& bus, std::function<void(const QString& version)> found);

 private:
  void ask();

  const QDBusConnection bus_;
  QDBusServiceWatcher owners_;
  std::function<void(const QString&)> found_;  // Empty once it was called.
};

}  // namespace tavin::gnome
