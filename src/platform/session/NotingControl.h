#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/RemoteActions.h"

namespace tavin::session {

// A key binding of the user's own may have run an action, which then counts as a press of a
// shortcut: `arrived` is called before each, and `pressed` after it before "speak", the one that
// looks for a selection. Main thread only.
class NotingControl final : public RemoteControl {
 public:
  NotingControl(std::unique_ptr<RemoteControl> control, std::function<void()> arrived,
                std::function<void()> pressed)
      : control_(std::move(control)), arrived_(std::move(arrived)), pressed_(std::move(pressed)) {}

  void serve(RemoteActions actions) override {
    actions.speakOrStop = after(pressed_, std::move(actions.speakOrStop));
    for (auto action : all) actions.*action = after(arrived_, std::move(actions.*action));
    control_->serve(std::move(actions));
  }

 private:
  static constexpr auto all = {&RemoteActions::activate,       &RemoteActions::speakOrStop,
                               &RemoteActions::togglePause,    &RemoteActions::stop,
                               &RemoteActions::nextSentence,   &RemoteActions::previousSentence,
                               &RemoteActions::nextParagraph,  &RemoteActions::previousParagraph,
                               &RemoteActions::repeatSentence, &RemoteActions::faster,
                               &RemoteActions::slower};

  static std::function<void()> after(std::function<void()> first, std::function<void()> action) {
    return [first = std::move(first), action = std::move(action)] {
      first();
      if (action)
        action();
    };
  }

  const std::unique_ptr<RemoteControl> control_;
  const std::function<void()> arrived_;
  const std::function<void()> pressed_;
};

}  // namespace tavin::session
