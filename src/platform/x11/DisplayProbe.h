#pragma once

#include <memory>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// Notices that an X display has ended, as one inside a Wayland compositor does now and then while
// the session goes on. One thread.
class DisplayProbe {
 public:
  // Whether the display is still the one that it was at the last call. Asks it.
  bool isTheSame();

 private:
  std::unique_ptr<Connection> connection_ = Connection::open();
};

}  // namespace tavin::x11
