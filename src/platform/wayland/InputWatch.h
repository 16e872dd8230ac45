#pragma once

#include <chrono>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Whether the user does anything, as compositors tell it to screen savers: no program hears of the
// keys and buttons of others. A moved pointer counts, too. Two protocols have it, KDE's and the
// standard one that came after it. The thread of its connection alone.
class InputWatch {
 public:
  // `connection` must outlive it. Before its binding is done.
  explicit InputWatch(Connection& connection);

  // From now on; what happens during copy::shortcutsPress does not count.
  void begin();
  void end();
  // Whether the user has done something since. Also true where that is not known: the compositor
  // has neither protocol, or a program keeps it from counting the time, as for a film.
  bool acted() const { return acted_ || !idle_; }

 private:
  using Clock = std::chrono::steady_clock;
  struct Events;
  void becomesIdle() { idle_ = true; }
  void resumes();

  wl_seat* const seat_;
  const Owned<ext_idle_notifier_v1> standard_;
  const Owned<org_kde_kwin_idle> kde_;
  Owned<ext_idle_notification_v1> standardClock_;
  Owned<org_kde_kwin_idle_timeout> kdeClock_;
  Clock::time_point pressIsOver_;
  bool idle_ = false;  // Since the last thing that was done.
  bool acted_ = false;
};

}  // namespace tavin::wayland
