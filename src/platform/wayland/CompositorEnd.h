#pragma once

#include <functional>

namespace tavin::wayland {

// Calls `ended` once, from the event loop, when the session's compositor has ended. Where the
// session says that programs shall live on while a compositor is started again, as Plasma does, one
// that comes in its place within seconds is as good. Belongs to the application; main thread only.
void whenCompositorEnds(std::function<void()> ended);

}  // namespace tavin::wayland
