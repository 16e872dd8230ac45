#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/RemoteActions.h"

namespace tavin::session {

// Calls `arrived` before "speak", the action that looks for a selection: a key binding of the
// user's own may have run it, and counts as a press of a shortcut. Main thread only.
class NotingControl final : public RemoteControl {
 public:
  NotingControl(std::unique_ptr<RemoteControl> control, std::function<void()> arrived)
      : control_(std::move(control)), arrived_(std::move(arrived)) {}

  void serve(RemoteActions actions) override {
    actions.speakOrStop = [arrived = arrived_, speak = std::move(actions.speakOrStop)] {
      arrived();
      speak();
    };
    control_->serve(std::move(actions));
  }

 private:
  const std::unique_ptr<RemoteControl> control_;
  const std::function<void()> arrived_;
};

}  // namespace tavin::session
