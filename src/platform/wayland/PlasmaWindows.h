#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

inline constexpr const char* plasmaWindowsName = "plasma-window-management";

// The windows and their processes as KWin tells them, to a program whose desktop file asks for it.
// Used by the thread of its connection alone.
class PlasmaWindows final : public WindowSource {
 public:
  // Null where the compositor does not offer it. Both must outlive it.
  static std::unique_ptr<PlasmaWindows> create(Connection& connection, WindowWatch& watch);
  ~PlasmaWindows() override;

  std::string name() const override { return plasmaWindowsName; }

 private:
  struct Window;
  struct Events;

  PlasmaWindows(Owned<org_kde_plasma_window_management> manager, WindowWatch& watch);
  void add(const char* uuid);
  void remove(const Window& window);

  const Owned<org_kde_plasma_window_management> manager_;
  WindowWatch& watch_;
  std::vector<std::unique_ptr<Window>> windows_;
};

}  // namespace tavin::wayland
