#include "platform/session/ChoosePortalKey.h"

#include <optional>
#include <utility>

#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/XwaylandModifiers.h"
#include "platform/portal/PortalCopyKey.h"
#include "platform/wayland/Keymap.h"
#include "platform/wayland/KwinModifiers.h"

namespace tavin::session {
namespace {

constexpr double secondsToConnect = 1;
constexpr double secondsForKeymap = 0.3;

std::optional<portal::ModifierHabits> habitsOf(
    const Survey& survey, SystemLog& log, const std::shared_ptr<gnome::HeldModifiers>& modifiers) {
  if (modifiers)
    return portal::ModifierHabits{.held = gnome::heldModifiersNow(modifiers)};
  if (std::shared_ptr states = wayland::KwinModifiers::create(Deadline::in(secondsToConnect)))
    return portal::ModifierHabits{.held = [states] { return states->modifiers(); }};
  if (!survey.isKwin())
    return portal::ModifierHabits{};
  if (wayland::kwinReleasesHeldKeys())
    return portal::ModifierHabits{.released = true};
  log.write(
      QStringLiteral("Tavin: KWin tells no held keys, so no copy is made: it finds no "
                     "desktop file of this program, or is too old"));
  return std::nullopt;
}

}  // namespace

std::unique_ptr<copy::CopyKey> createPortalKey(
    const Survey& survey, SystemLog& log, const std::shared_ptr<gnome::HeldModifiers>& modifiers) {
  auto habits = habitsOf(survey, log, modifiers);
  if (!habits)
    return nullptr;
  return std::make_unique<portal::PortalCopyKey>(
      std::make_shared<portal::RemoteDesktop>(log), std::move(*habits),
      [] { return wayland::readKeymap(Deadline::in(secondsForKeymap)); });
}

}  // namespace tavin::session
