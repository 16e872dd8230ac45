#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/copy/CopyKeyboard.h"
#include "platform/portal/RemoteDesktop.h"

namespace tavin::portal {

// What becomes of the modifiers that the user holds down: the compositor adds them to every key.
struct ModifierHabits {
  // Those held now, as far as the desktop tells; empty where it tells nothing.
  std::function<std::uint64_t()> held;
  // The compositor lets go of a key that another keyboard holds.
  bool released = false;
};

// Types the copy command with the user's leave, through the desktop's portal. No event is made
// where there is no leave yet, and none while a modifier is held that cannot be released. Work
// queue only, save its making and end: main thread.
class PortalKeyboard final : public copy::CopyKeyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys.
  PortalKeyboard(std::shared_ptr<RemoteDesktop> desktop, std::function<bool()> mayCopy,
                 ModifierHabits modifiers);

  std::uint64_t flagsState() override;
  bool isReady() override;

 private:
  void typeChord() override;

  const std::shared_ptr<RemoteDesktop> desktop_;
  const ModifierHabits modifiers_;
  std::optional<QDBusObjectPath> session_;  // That the chord goes through.
};

}  // namespace tavin::portal
