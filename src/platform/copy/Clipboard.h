#pragma once

#include <functional>
#include <memory>

#include "platform/Pasteboard.h"

namespace tavin::copy {

// The clipboard of a desktop.
struct Clipboard {
  std::unique_ptr<Pasteboard> pasteboard;
  // To be called before the process ends: from then on nothing is copied, and what we serve on the
  // clipboard is given to the session's clipboard manager, where there is a way to. Any thread,
  // half a second at most.
  std::function<void()> handOver;
};

}  // namespace tavin::copy
