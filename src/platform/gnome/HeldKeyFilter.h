#pragma once

#include <QDBusConnection>
#include <memory>
#include <optional>

#include "platform/RemoteActions.h"
#include "platform/gnome/HeldModifiers.h"

namespace tavin::gnome {

// One shortcut's presses among the runs of its command, which a held key repeats.
class PressFilter {
 public:
  // Whether a run that was asked for at `now` is a press of its own: that takes new input, a
  // repetition takes none. In doubt it is a repetition.
  bool isPress(Clock::time_point now, Input last);

 private:
  struct Press {
    Clock::time_point at;
    Input input;
  };
  std::optional<Press> press_;
  std::optional<Clock::time_point> repetition_;  // Since that press.
};

// Between the program and its D-Bus actions where those are what GNOME's custom key bindings run:
// GNOME runs the command again and again while the key is held, thirty times a second. The shell is
// asked how long the user has been idle. What remains: a hand on the mouse while the key is held
// makes a press of a repetition. Main thread only.
class HeldKeyFilter final : public RemoteControl {
 public:
  // Tells `modifiers`, which may be null, of each press that makes Tavin look for a selection.
  HeldKeyFilter(const QDBusConnection& bus, std::unique_ptr<RemoteControl> actions,
                std::shared_ptr<HeldModifiers> modifiers);

  void serve(RemoteActions actions) override;

 private:
  std::function<void()> filtered(std::function<void()> action,
                                 std::shared_ptr<HeldModifiers> modifiers);

  QDBusConnection bus_;
  const std::unique_ptr<RemoteControl> actions_;
  const std::shared_ptr<HeldModifiers> modifiers_;
};

}  // namespace tavin::gnome
