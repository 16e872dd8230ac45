#include <malloc.h>
#include <unistd.h>

#include <memory>

#include "app/AppDelegate.h"
#include "hotkeys/HotkeyCenter.h"
#include "platform/session/PlatformFactory.h"

int main(int argc, char** argv) {
  using namespace tavin;
  // Left to itself, the allocator keeps the memory of one long selection for good.
  ::mallopt(M_MMAP_THRESHOLD, 1 << 20);
  const session::StartedPlatform started = session::startPlatform(argc, argv);
  if (!started.platform)
    return started.exitCode;
  Platform& app = *started.platform;
  HotkeyCenter hotkeys(*app.hotkeys, *app.mainQueue, *app.log);
  const auto delegate = std::make_shared<AppDelegate>(app, hotkeys);
  app.application->setDelegate(delegate.get());
  const int code = app.application->run();
  for (const auto& hook : app.shutdownHooks) hook();
  // A capture or a request may still hang in its thread: the process ends without waiting for it,
  // and without destroying what it uses.
  ::_exit(code);
}
