#pragma once

#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

// The protocols for taskbars. Each tells `watch` what happens to the windows, on the thread of
// `connection`, for as long as the source lives; both must outlive it. Its manager is null where
// the compositor does not offer the protocol.

// The windows and their processes as KWin tells them, to a program whose desktop file asks for it.
WindowSource plasmaWindows(Connection& connection, WindowWatch& watch);
// The windows as wlroots' compositors tell them.
WindowSource foreignToplevels(Connection& connection, WindowWatch& watch);

}  // namespace tavin::wayland
