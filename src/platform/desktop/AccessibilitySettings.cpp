#include "platform/desktop/AccessibilitySettings.h"

#include <QStandardPaths>

#include "platform/desktop/DesktopName.h"

namespace tavin::desktop {
namespace {

struct Settings {
  const char* desktop;
  const char* program;
  const char* page;  // Null where the program has but one.
};

// For each desktop in the order of its versions, the newest first.
constexpr Settings known[] = {
    {"GNOME", "gnome-control-center", "universal-access"},
    {"KDE", "systemsettings", "kcm_access"},
    {"KDE", "systemsettings5", "kcm_access"},
    {"XFCE", "xfce4-accessibility-settings", nullptr},
    {"X-Cinnamon", "cinnamon-settings", "universal-access"},
    {"Cinnamon", "cinnamon-settings", "universal-access"},
    {"MATE", "mate-at-properties", nullptr},
};

}  // namespace

std::optional<QStringList> accessibilitySettingsCommand() {
  for (const QString& desktop : currentDesktops()) {
    for (const Settings& candidate : known) {
      if (desktop.compare(QLatin1String(candidate.desktop), Qt::CaseInsensitive) != 0)
        continue;
      QStringList command{QStandardPaths::findExecutable(QLatin1String(candidate.program))};
      if (command.first().isEmpty())
        continue;
      if (candidate.page != nullptr)
        command.append(QLatin1String(candidate.page));
      return command;
    }
  }
  return std::nullopt;
}

}  // namespace tavin::desktop
