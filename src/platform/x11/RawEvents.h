#pragma once

#include <xcb/xinput.h>

#include <cstdint>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// The display's raw events of keys and buttons: they pass by every grab and know no repeats. One
// thread.
class RawEvents {
 public:
  // `connection` must outlive it.
  explicit RawEvents(const Connection& connection) : connection_(connection) {}

  // Asks the display for what this needs. False where it has no XInput 2.1.
  bool prepare();
  // From now on those in `mask`, of XCB_INPUT_XI_EVENT_MASK_RAW_*, come on the connection. Flushes
  // nothing.
  void select(std::uint32_t mask) const;
  // Null where it is none. Keys and buttons have the same layout.
  const xcb_input_raw_key_press_event_t* in(const xcb_generic_event_t& event) const;

 private:
  const Connection& connection_;
  std::uint8_t extension_ = 0;
};

}  // namespace tavin::x11
