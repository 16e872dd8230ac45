#include "platform/session/ShortcutServices.h"

#include <array>
#include <utility>

#include "platform/desktop/DesktopName.h"
#include "platform/gnome/CommandShortcuts.h"
#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/KeyHolders.h"
#include "platform/gnome/ShellWatch.h"
#include "platform/gnome/ShortcutSettings.h"
#include "platform/kde/GlobalAccel.h"
#include "platform/portal/GlobalShortcuts.h"
#include "platform/session/Candidates.h"
#include "platform/shortcuts/LateHotkeys.h"
#include "platform/shortcuts/NoService.h"
#include "platform/x11/HotkeyGrabs.h"

namespace tavin::session {
namespace {

using Made = std::unique_ptr<shortcuts::Service>;
using Row = Candidate<Made(const Survey&, const ShortcutNeeds&)>;

constexpr const char* variable = "TAVIN_SHORTCUTS";
constexpr const char* gnomeService = "gnome";
constexpr int firstGnomeWithPortal = 48;

const QString ownBindings = QStringLiteral(
    "on this desktop, key bindings of its own can run 'gapplication action app.tavin.Tavin speak' "
    "and '... pause'");

Made createGrabs(const Survey&, const ShortcutNeeds&) {
  if (auto grabs = x11::HotkeyGrabs::create())
    return grabs;
  return std::make_unique<shortcuts::NoService>(
      QStringLiteral("the X display does not answer or has no XInput 2.1"));
}

// GNOME's portal grants a key that GNOME itself holds, and never tells its presses.
portal::GlobalShortcuts::Holder holderIn(const Survey& survey) {
  if (survey.gnomeShellVersion.isEmpty())
    return [](const shortcuts::KeyCombination&) { return std::nullopt; };
  return [](const shortcuts::KeyCombination& combination) {
    return gnome::holderOf(gnome::BothAccelerators::of(combination), {});
  };
}

Made createPortal(const Survey& survey, const ShortcutNeeds& needs) {
  std::function<void()> noted;
  if (needs.modifiers)
    noted = [modifiers = needs.modifiers] { gnome::HeldModifiers::noteIn(modifiers); };
  return std::make_unique<portal::GlobalShortcuts>(holderIn(survey), std::move(noted));
}

const Row& choose(const Survey& survey);

// A shell that starts with the session may be slower than Tavin.
Made awaitShell(const Survey& survey, const ShortcutNeeds& needs) {
  return std::make_unique<shortcuts::LateHotkeys>(
      QStringLiteral("GNOME Shell has not answered yet; without it, ") + ownBindings,
      [survey, needs](const shortcuts::LateHotkeys::Arrived& arrived) {
        return std::make_shared<gnome::ShellWatch>(
            needs.bus, [survey, needs, arrived](const QString& version) {
              Survey complete = survey;
              complete.gnomeShellVersion = version;
              arrived(choose(complete).create(complete, needs));
            });
      });
}

Made createNone(const Survey& survey, const ShortcutNeeds& needs) {
  // A desktop that only calls itself GNOME has no shell, and waits in vain.
  const bool forced = qEnvironmentVariable(variable) == QLatin1String("none");
  if (desktop::isGnome(survey.desktops) && survey.gnomeShellVersion.isEmpty() && !forced)
    return awaitShell(survey, needs);
  return std::make_unique<shortcuts::NoService>(ownBindings);
}

int shellVersion(const Survey& survey) {
  return survey.gnomeShellVersion.section(u'.', 0, 0).toInt();
}

const std::array<Row, 5> table{
    {// Whatever the desktop: X itself grants keys.
     {"x11", [](const Survey& survey) { return !survey.isWaylandSession(); }, createGrabs},
     // Shows no dialog and tells a conflict.
     {"kde",
      [](const Survey& survey) {
        return survey.desktops.contains(QStringLiteral("KDE")) || survey.kwinServesShortcuts;
      },
      [](const Survey&, const ShortcutNeeds&) -> Made {
        return std::make_unique<kde::GlobalAccel>();
      }},
     // Before its portal for shortcuts, GNOME can only run a command for a key.
     {gnomeService,
      [](const Survey& survey) {
        return !survey.gnomeShellVersion.isEmpty() && shellVersion(survey) < firstGnomeWithPortal;
      },
      [](const Survey&, const ShortcutNeeds& needs) -> Made {
        return std::make_unique<gnome::CommandShortcuts>(needs.bus, needs.serveKey,
                                                         needs.modifiers);
      }},
     // GNOME's alone: other desktops' portals grant keys that never arrive.
     {"portal", [](const Survey& survey) { return !survey.gnomeShellVersion.isEmpty(); },
      createPortal},
     // The desktop's own key bindings, made by the user, run the program's actions.
     {"none", [](const Survey&) { return true; }, createNone}}};

const Row& choose(const Survey& survey) {
  return *candidates(std::span<const Row>(table), variable, survey).front();
}

}  // namespace

QString shortcutServiceFor(const Survey& survey) { return QLatin1String(choose(survey).name); }

ChosenShortcuts createShortcuts(const Survey& survey, const ShortcutNeeds& needs) {
  const Row& row = choose(survey);
  // A Tavin that was killed in the same user's other session may have left them there.
  if (desktop::isGnome(survey.desktops) && QLatin1String(row.name) != QLatin1String(gnomeService))
    gnome::removeCustomBindings();
  return {row.create(survey, needs), QLatin1String(row.name)};
}

}  // namespace tavin::session
