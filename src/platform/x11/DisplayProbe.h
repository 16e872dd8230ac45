#pragma once

#include <memory>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// Notices that an X display has ended, as one inside a Wayland compositor does now and then while
// the session goes on. One thread.
class DisplayProbe {
 public:
  enum class Display {
    same,    // As at the last call.
    other,   // It has ended since; there may be a new one.
    silent,  // It does not answer: whoever asks it anything would wait without end.
  };
  // Asks it; bounded by a third of a second.
  Display look();

 private:
  std::unique_ptr<Connection> connection_ = Connection::open();
};

}  // namespace tavin::x11
