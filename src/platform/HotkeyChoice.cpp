#include "platform/HotkeyChoice.h"

#include <QHash>
#include <utility>

#include "platform/LateHotkeys.h"
#include "platform/gnome/CustomBindings.h"
#include "platform/gnome/CustomKeybindings.h"
#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/KeyHolders.h"
#include "platform/kde/GlobalAccel.h"
#include "platform/portal/GlobalShortcuts.h"
#include "platform/shortcuts/NoHotkeys.h"
#include "platform/x11/HotkeyGrabs.h"

namespace tavin {
namespace {

constexpr int firstGnomeWithPortal = 48;

const QHash<QString, HotkeyRoad>& roadsByName() {
  static const QHash<QString, HotkeyRoad> roads{{QStringLiteral("x11"), HotkeyRoad::x11},
                                                {QStringLiteral("kde"), HotkeyRoad::kde},
                                                {QStringLiteral("gnome"), HotkeyRoad::gnome},
                                                {QStringLiteral("portal"), HotkeyRoad::portal},
                                                {QStringLiteral("none"), HotkeyRoad::none}};
  return roads;
}

HotkeyRoad roadOf(const SessionTraits& session) {
  if (!session.wayland)
    return HotkeyRoad::x11;
  if (session.desktops.contains(QStringLiteral("KDE")) || session.kwinServes)
    return HotkeyRoad::kde;
  if (session.gnomeShellVersion.isEmpty())
    return HotkeyRoad::none;
  const int version = session.gnomeShellVersion.section(u'.', 0, 0).toInt();
  return version < firstGnomeWithPortal ? HotkeyRoad::gnome : HotkeyRoad::portal;
}

template <typename Service>
ChosenHotkeys toBeReleased(std::unique_ptr<Service> service) {
  Service& given = *service;
  return {.service = std::move(service), .release = [&given] { given.release(); }};
}

ChosenHotkeys refusing(const QString& reason) {
  return {.service = std::make_unique<shortcuts::NoHotkeys>(reason)};
}

// GNOME's portal grants a key that GNOME itself holds, and never tells its presses.
portal::GlobalShortcuts::Holder holderIn(const SessionTraits& session) {
  if (session.gnomeShellVersion.isEmpty())
    return [](std::uint32_t, std::uint32_t) { return std::nullopt; };
  return [](std::uint32_t keyCode, std::uint32_t modifiers) -> std::optional<QString> {
    const auto combination = gnome::Combination::of(keyCode, modifiers);
    return combination ? gnome::holderOf(*combination, {}) : std::nullopt;
  };
}

const QString ownBindings = QStringLiteral(
    "on this desktop, key bindings of its own can run 'gapplication action app.tavin.Tavin speak' "
    "and '... pause'");

std::function<void()> noteIn(const std::shared_ptr<gnome::HeldModifiers>& modifiers) {
  if (!modifiers)
    return {};
  return [modifiers] { gnome::HeldModifiers::noteIn(modifiers); };
}

ChosenHotkeys make(HotkeyRoad road, const SessionTraits& session, const HotkeyNeeds& needs) {
  switch (road) {
    case HotkeyRoad::x11:
      if (auto grabs = x11::HotkeyGrabs::create())
        return {.service = std::move(grabs)};
      return refusing(QStringLiteral("the X display does not answer or has no XInput 2.1"));
    case HotkeyRoad::kde:
      return toBeReleased(std::make_unique<kde::GlobalAccel>());
    case HotkeyRoad::gnome:
      return toBeReleased(std::make_unique<gnome::CustomBindings>(QDBusConnection::sessionBus(),
                                                                  needs.serveKey, needs.modifiers));
    case HotkeyRoad::portal:
      return {.service = std::make_unique<portal::GlobalShortcuts>(holderIn(session),
                                                                   noteIn(needs.modifiers))};
    case HotkeyRoad::none:
      break;
  }
  return refusing(ownBindings);
}

// A shell that starts with the session may be slower than Tavin; a desktop that only calls itself
// GNOME has none.
ChosenHotkeys awaitShell(const SessionTraits& session, const HotkeyNeeds& needs) {
  return toBeReleased(std::make_unique<LateHotkeys>(
      QStringLiteral("GNOME Shell has not answered yet; without it, ") + ownBindings,
      [session, needs](const QString& shellVersion) {
        SessionTraits complete = session;
        complete.gnomeShellVersion = shellVersion;
        return make(roadOf(complete), complete, needs);
      }));
}

}  // namespace

HotkeyRoad chooseHotkeyRoad(const SessionTraits& session, const QString& forced) {
  return roadsByName().value(forced, roadOf(session));
}

ChosenHotkeys chooseHotkeys(const HotkeyNeeds& needs) {
  const QString forced = qEnvironmentVariable("TAVIN_SHORTCUTS");
  const SessionTraits session = SessionTraits::read(needs.wayland);
  const HotkeyRoad road = chooseHotkeyRoad(session, forced);
  const bool onGnome = session.desktops.contains(QStringLiteral("GNOME"));
  // A Tavin that was killed in the same user's other session may have left them there.
  if (road != HotkeyRoad::gnome && onGnome)
    gnome::removeCustomBindings();
  const bool shellIsLate = road == HotkeyRoad::none && onGnome && !roadsByName().contains(forced);
  ChosenHotkeys chosen = shellIsLate ? awaitShell(session, needs) : make(road, session, needs);
  chosen.road = road;
  chosen.name = roadsByName().key(road);
  return chosen;
}

}  // namespace tavin
