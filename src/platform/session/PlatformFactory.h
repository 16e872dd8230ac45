#pragma once

#include <memory>
#include <optional>

#include "platform/Platform.h"

namespace tavin::session {

struct StartedPlatform {
  std::unique_ptr<Platform> platform;  // Null where the process has nothing more to do.
  int exitCode = 0;                    // Then: 0 after handing over to a running Tavin, else 1.
};

// Chooses every back end from what the session offers. Nothing outside this folder knows back ends
// and the logic's contracts both, save the back ends themselves. What is missing is said
// in one line on standard error. Call once, on the main thread, before anything else; `argc` and
// `argv` must outlive the platform.
StartedPlatform startPlatform(int& argc, char** argv);

}  // namespace tavin::session
