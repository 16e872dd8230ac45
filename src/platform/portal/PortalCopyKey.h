#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/copy/CopyChord.h"
#include "platform/copy/CopyKey.h"
#include "platform/portal/RemoteDesktop.h"

namespace tavin::portal {

// What becomes of the modifiers that the user holds down: the compositor adds them to every key.
struct ModifierHabits {
  // Those held now, as far as the desktop tells; empty where it tells nothing.
  std::function<std::uint64_t()> held = {};
  // The compositor releases a key that another keyboard holds.
  bool released = false;
};

// Types the copy command with the user's permission, through the desktop's portal. Work
// queue only, save its making and end: main thread.
class PortalCopyKey final : public copy::CopyKey {
 public:
  // `keymap` tells what the user's keyboard puts on each key, in XKB's format; empty where that is
  // not known.
  PortalCopyKey(std::shared_ptr<RemoteDesktop> desktop, ModifierHabits modifiers,
                std::function<std::string()> keymap)
      : desktop_(std::move(desktop)),
        modifiers_(std::move(modifiers)),
        keymap_(std::move(keymap)) {}

  std::uint64_t heldModifiers() override { return modifiers_.held ? modifiers_.held() : 0; }
  bool isPermitted() override;
  // Not where the user's layout lacks one of the keys either.
  bool prepare() override;
  void type() override;

 private:
  const std::shared_ptr<RemoteDesktop> desktop_;
  const ModifierHabits modifiers_;
  const std::function<std::string()> keymap_;
  copy::ChordInLayout chord_;
  std::optional<QDBusObjectPath> session_;  // That the keys go through.
};

}  // namespace tavin::portal
