#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "platform/HotkeyService.h"

namespace tavin::gnome {
class HeldModifiers;
}

namespace tavin {

// The ways in which desktops let a program have shortcuts.
enum class HotkeyRoad {
  x11,     // Key grabs.
  kde,     // KGlobalAccel.
  gnome,   // GNOME's custom key bindings.
  portal,  // The GlobalShortcuts portal.
  none,    // The desktop's own key bindings, made by the user, run the program's actions.
};

// What a session tells of itself.
struct SessionTraits {
  bool wayland = false;
  QStringList desktops;       // As XDG_CURRENT_DESKTOP names them.
  bool kwinServes = false;    // KWin itself answers for KGlobalAccel.
  QString gnomeShellVersion;  // Empty where there is no GNOME Shell.

  // Asks the session, for at most a second.
  static SessionTraits read(bool wayland);
};

// The road for such a session. `forced` is a road's name, any other is ignored.
HotkeyRoad chooseHotkeyRoad(const SessionTraits& session, const QString& forced);

struct ChosenHotkeys {
  std::unique_ptr<HotkeyService> service;  // Never null.
  std::function<void()> release = {};      // What it owes the desktop at the end; may be empty.
  HotkeyRoad road = HotkeyRoad::none;
  QString name = {};  // Of the road, for the log.
};

// What the services need.
struct HotkeyNeeds {
  bool wayland = false;  // The session is one of Wayland.
  // To be told of presses on GNOME; null elsewhere.
  std::shared_ptr<gnome::HeldModifiers> modifiers;
  // Has a D-Bus action call the function at each of its runs.
  std::function<void(const QString& action, std::function<void()> ran)> serveKey;
};

// Shortcuts as this session offers them, or as the environment's TAVIN_SHORTCUTS says: x11, kde,
// gnome, portal or none. Where GNOME Shell is still to come, they are chosen again when it is
// there; the name in the log stays "none".
ChosenHotkeys chooseHotkeys(const HotkeyNeeds& needs);

}  // namespace tavin
