#pragma once

namespace tavin {

// Told about the beginning and the end of the program. Main thread only.
class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;
  virtual void applicationDidFinishLaunching() = 0;
  virtual void applicationWillTerminate() = 0;
};

// The process's event loop. Main thread only. SIGTERM, SIGINT and the end of the desktop session
// terminate it like the menu's command; a closed window does not.
class Application {
 public:
  virtual ~Application() = default;
  virtual void setDelegate(ApplicationDelegate* delegate) = 0;  // Not owned.
  // Tells the delegate that launching is done, runs until terminated, tells it so, returns 0.
  virtual int run() = 0;
  virtual void terminate() = 0;
};

}  // namespace tavin
