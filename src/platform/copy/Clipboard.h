#pragma once

#include <functional>
#include <memory>

#include "platform/copy/WatchedPasteboard.h"

namespace tavin::copy {

// The clipboard of a desktop.
struct Clipboard {
  std::unique_ptr<WatchedPasteboard> pasteboard;
  // To be called before the process ends: what we serve is given to the session's clipboard
  // manager, where there is a way to. Any thread, two seconds at most.
  std::function<void()> handOver;
};

}  // namespace tavin::copy
