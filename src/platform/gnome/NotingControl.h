#pragma once

#include <memory>
#include <utility>

#include "platform/RemoteActions.h"
#include "platform/gnome/HeldModifiers.h"

namespace tavin::gnome {

// Tells `modifiers` of each action that looks for a selection: a key binding of the user's own may
// have run it, and its modifiers are then held like those of a shortcut. Main thread only.
class NotingControl final : public RemoteControl {
 public:
  NotingControl(std::unique_ptr<RemoteControl> control, std::shared_ptr<HeldModifiers> modifiers)
      : control_(std::move(control)), modifiers_(std::move(modifiers)) {}

  void serve(RemoteActions actions) override {
    actions.speakOrStop = [modifiers = modifiers_, speak = std::move(actions.speakOrStop)] {
      HeldModifiers::noteIn(modifiers);
      speak();
    };
    control_->serve(std::move(actions));
  }

 private:
  const std::unique_ptr<RemoteControl> control_;
  const std::shared_ptr<HeldModifiers> modifiers_;
};

}  // namespace tavin::gnome
