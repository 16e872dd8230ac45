#pragma once

#include <cstdint>
#include <set>

#include "platform/x11/RawEvents.h"

namespace tavin::x11 {

// Tells a press from the repeats of a key that is held. A repeat looks like a press, and the
// release of a key whose grab was given up goes to another window; so while one of the keys is
// down, and only then, the display's raw key events are watched, which pass by every grab and know
// no repeats.
class RepeatFilter {
 public:
  // `connection` must outlive it.
  explicit RepeatFilter(const Connection& connection)
      : connection_(connection), events_(connection) {}

  // Asks the display for what this needs. False where it has no XInput 2.1.
  bool prepare() { return events_.prepare(); }
  // A press of a grabbed key came. True where the key was up before. Flushes nothing.
  bool press(xcb_keycode_t key);
  // Any event; takes notice of releases and of raw events.
  void observe(const xcb_generic_event_t& event);

 private:
  void lift(xcb_keycode_t key);
  void watchRawEvents(bool on);

  const Connection& connection_;
  RawEvents events_;
  std::set<xcb_keycode_t> held_;
};

}  // namespace tavin::x11
