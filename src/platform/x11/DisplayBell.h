#pragma once

namespace tavin::x11 {

// Rings the display's bell over a connection that lasts as long. Waits for the display only.
void ringDisplayBell();

}  // namespace tavin::x11
