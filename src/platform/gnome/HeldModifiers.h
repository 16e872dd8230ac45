#pragma once

#include <QDBusConnection>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/gnome/InputClock.h"

namespace tavin::gnome {

// Whether the user still holds the shortcut down. GNOME tells no program which keys are held, but
// how long ago the last input was: where nothing was pressed, released or moved since the shortcut,
// all of it is still down. Whoever releases the key releases the modifiers right after.
class ShortcutHold {
 public:
  // A shortcut ran its command at `now`.
  void pressed(Clock::time_point now);
  // The last input, as asked for at that press; it may have come after it. Where there was none
  // shortly before, no key ran the command, and nothing is held. Of an earlier press: ignored.
  void refine(Clock::time_point press, InputTime input);
  // Whether it is held at `now`, when the last input was `input`.
  bool isHeld(Clock::time_point now, InputTime input);
  // Whether there is a press to ask about. Costs nothing.
  bool mayBeHeld(Clock::time_point now) const;

 private:
  struct Press {
    Clock::time_point at;
    Clock::time_point key;  // Went down by then.
  };
  std::optional<Press> press_;
  std::optional<Clock::time_point> released_;  // The first input after it.
};

// The same, by asking the shell, for windows of which XwaylandModifiers knows nothing. What
// remains: whoever releases the key alone and keeps the modifier down counts as having released
// both, and whoever let go of all before the command ran as holding it still. Any thread.
class HeldModifiers {
 public:
  explicit HeldModifiers(const QDBusConnection& bus) : bus_(bus) {}

  // As in ShortcutHold.
  void pressed(Clock::time_point now);
  void refine(Clock::time_point press, InputTime input);
  // A press that came just now: it counts from here on, and the shell is asked for the last input
  // beside. Main thread.
  static void noteIn(const std::shared_ptr<HeldModifiers>& modifiers);
  // As EventFlags; bounded by a tenth of a second.
  std::uint64_t flags();

 private:
  const QDBusConnection bus_;
  std::mutex mutex_;
  ShortcutHold hold_;
};

}  // namespace tavin::gnome
