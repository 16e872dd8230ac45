#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// One key with every modifier mask under which it is wanted.
struct KeyGrab {
  xcb_keycode_t keycode = 0;
  std::vector<std::uint16_t> masks;
};

struct GrabRefusal {
  std::int32_t status = 0;  // The X error code.
  QString reason;
};

// Has the display send every press of the key to the connection, whichever window has the focus.
// A refusal leaves nothing grabbed. Waits for the display once.
std::optional<GrabRefusal> grabKey(const Connection& connection, const KeyGrab& grab);
void ungrabKey(const Connection& connection, const KeyGrab& grab);

}  // namespace tavin::x11
