#pragma once

#include <QDBusConnection>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/RemoteActions.h"

namespace tavin::gnome {

// One shortcut's presses among the runs of its command, which a held key repeats.
class PressFilter {
 public:
  using Clock = std::chrono::steady_clock;

  // Whether a run that was asked for at `now` is a press of its own. `lastInput` is when the user
  // last pressed, released or moved anything: a repetition needs no input, a press does.
  bool isPress(Clock::time_point now, Clock::time_point lastInput);

 private:
  std::optional<Clock::time_point> lastPress_;
  std::optional<Clock::time_point> lastRepetition_;
};

// Between the program and its D-Bus actions where those are what GNOME's custom key bindings run:
// GNOME runs the command again and again while the key is held, thirty times a second. The shell is
// asked how long the user has been idle; where it does not answer within a moment, the run counts
// as a press. What remains: a hand on the mouse while the key is held makes another press of a
// repetition. Main thread only.
class HeldKeyFilter final : public RemoteControl {
 public:
  HeldKeyFilter(const QDBusConnection& bus, std::unique_ptr<RemoteControl> actions);

  void serve(RemoteActions actions) override;

 private:
  std::function<void()> filtered(std::function<void()> action);

  QDBusConnection bus_;
  const std::unique_ptr<RemoteControl> actions_;
};

}  // namespace tavin::gnome
