#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

// The windows that KWin tells of to its taskbar, and what a taskbar does with them.
class WindowList {
 public:
  // The interface's number in the registry.
  WindowList(wl_registry* registry, std::uint32_t name);
  ~WindowList();

  // One a line: "UUID PID ACTIVE X Y WIDTH HEIGHT", then program and title, a tab before each.
  void print(std::ostream& out) const;
  // False where there is no such window.
  bool activate(const std::string& uuid) const;

 private:
  struct Window {
    org_kde_plasma_window* handle = nullptr;
    std::string uuid, program, title;
    std::uint32_t process = 0, state = 0, width = 0, height = 0;
    std::int32_t x = 0, y = 0;
    bool shown = true;
  };
  struct Events;

  org_kde_plasma_window_management* manager_;
  std::vector<std::unique_ptr<Window>> windows_;
};
