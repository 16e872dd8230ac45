#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <memory>

namespace tavin::wayland {
class Compositor;
}

namespace tavin::session {

// What a session offers and tells of itself: plain facts, each asked for once. What is made of them
// stands in the tables of the services.
struct Survey {
  std::shared_ptr<wayland::Compositor> compositor;  // With data control; null where there is none.
  bool wayland = false;          // There is a compositor, with or without data control.
  bool xwayland = false;         // The X display is that of a compositor without data control.
  bool display = false;          // There is an X display, and a need for one.
  bool qtSpeaksWayland = false;  // Qt's plug-in for it is installed.
  QStringList desktops;          // As XDG_CURRENT_DESKTOP names them.
  // What the session bus tells; asked for later than the rest.
  bool kwinServesShortcuts = false;  // KWin itself answers for KGlobalAccel.
  QString gnomeShellVersion;         // Empty where there is no GNOME Shell.

  // Looks round, before Qt is started; bounded by seven seconds, of which a session that answers
  // takes next to none.
  static Survey take();
  // Asks on the session bus what only programs on it know, for at most a second. Of X11 nothing is
  // asked.
  void askBus(const QDBusConnection& bus);

  bool isWaylandSession() const { return compositor || xwayland; }
  bool isKwin() const;
  // Qt's plug-in for windows in this session.
  const char* qtPlatform() const;
  bool showsOnX11() const { return !wayland || !qtSpeaksWayland; }
  // Why nothing can be shown here, in one line; empty where it can.
  QByteArray obstacle() const;
};

}  // namespace tavin::session
