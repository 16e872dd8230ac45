#pragma once

#include <cstdint>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// What a connection is told about the keyboard beyond its keys. Does nothing where the display has
// no keyboard extension; the core events serve then.
class KeyboardExtension {
 public:
  // From now on a held key repeats without releases between, and changes of the keyboard are told.
  void announceTo(const Connection& connection);
  // Whether the event says that keys have other symbols now, or another keyboard is in use.
  bool isChange(const xcb_generic_event_t& event) const;

 private:
  int event_ = -1;
};

}  // namespace tavin::x11
