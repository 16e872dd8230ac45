#pragma once

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <memory>

#include "platform/session/Survey.h"
#include "platform/shortcuts/Service.h"

namespace tavin::gnome {
class HeldModifiers;
}

namespace tavin::session {

// What the services need.
struct ShortcutNeeds {
  QDBusConnection bus;
  // To be told of presses on GNOME; null elsewhere.
  std::shared_ptr<gnome::HeldModifiers> modifiers;
  // Has a D-Bus action call the function at each of its runs.
  std::function<void(const QString& action, std::function<void()> ran)> serveKey;
};

struct ChosenShortcuts {
  std::unique_ptr<shortcuts::Service> service;  // Never null.
  QString name;                                 // In the table, for the log.
};

// Shortcuts as this session offers them, or as the environment's TAVIN_SHORTCUTS says by a name in
// the table. Where GNOME Shell is still to come, they are chosen again when it is there; the name
// stays "none". `survey` must have asked the bus.
ChosenShortcuts createShortcuts(const Survey& survey, const ShortcutNeeds& needs);

// The name alone.
QString shortcutServiceFor(const Survey& survey);

}  // namespace tavin::session
