#pragma once

#include "platform/copy/UserInput.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Whether the user does anything, as compositors tell it to screen savers: no program hears of the
// keys and buttons of others. A moved pointer counts, too. Two protocols have it, KDE's and the
// standard one that came after it. The thread of its connection alone.
class InputWatch {
 public:
  // `connection` must outlive it. Before its binding is done.
  explicit InputWatch(Connection& connection);

  // From now on; what happens during copy::shortcutsEnd does not count.
  void begin();
  void end();
  // A shortcut of ours was pressed.
  void shortcutArrived(copy::UserInput::Time time);
  // What the user has done since. Unknown where the compositor has neither protocol, or a program
  // keeps it from counting the time, as for a film.
  copy::UserInput input() const;

 private:
  using Clock = copy::UserInput::Clock;
  void becomesIdle() { idle_ = true; }
  void resumes();

  wl_seat* const seat_;
  const Owned<ext_idle_notifier_v1> standard_;
  const Owned<org_kde_kwin_idle> kde_;
  Owned<ext_idle_notification_v1> standardClock_;
  Owned<org_kde_kwin_idle_timeout> kdeClock_;
  copy::UserInput::Time pressIsOver_;
  bool idle_ = false;  // Since the last thing that was done.
  copy::UserInput input_;
};

}  // namespace tavin::wayland
