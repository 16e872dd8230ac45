#pragma once

#include <optional>

#include "platform/gnome/InputClock.h"

namespace tavin::gnome {

// One shortcut's presses among the runs of its command: GNOME runs it again and again while the key
// is held, thirty times a second. What remains: a hand on the mouse while the key is held makes a
// press of a repetition.
class PressFilter {
 public:
  // Whether a run that came at `now` is a press of its own whatever the input was: no other came
  // for longer than a keyboard waits before it repeats. Then it is noted as one, and its input is
  // told when it is known.
  bool isSurelyPress(Clock::time_point now);
  void refine(Clock::time_point press, InputTime last);
  // Whether a run that was asked for at `now` is a press of its own: that takes new input, a
  // repetition takes none. In doubt it is a repetition.
  bool isPress(Clock::time_point now, InputTime last);

 private:
  struct Press {
    Clock::time_point at;
    InputTime input;
  };
  std::optional<Press> press_;
  std::optional<Clock::time_point> repetition_;  // Since that press.
};

}  // namespace tavin::gnome
