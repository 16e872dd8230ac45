// Works the keyboard and the pointer of the compositor that WAYLAND_DISPLAY names, through KWin's
// fake input. Reads requests from standard input, one a line, and answers each with "ok" once the
// compositor has taken it:
//   key CODE 0|1      a kernel key code, up or down
//   move X Y          the pointer, in pixels
//   button CODE 0|1   a kernel button code, up or down
//   windows           tells the windows before the "ok", as WindowList prints them
//   activate UUID     brings a window to the front
#include <wayland-client.h>

#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "fake-input-client-protocol.h"
#include "plasma-window-management-client-protocol.h"
#include "window_list.h"

namespace {

constexpr std::uint32_t keyboardVersion = 4;
org_kde_kwin_fake_input* input = nullptr;
std::unique_ptr<WindowList> windows;

void found(void*, wl_registry* registry, std::uint32_t name, const char* interface,
           std::uint32_t version) {
  if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0 &&
      version >= keyboardVersion)
    input = static_cast<org_kde_kwin_fake_input*>(
        wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, keyboardVersion));
  if (std::strcmp(interface, org_kde_plasma_window_management_interface.name) == 0)
    windows = std::make_unique<WindowList>(registry, name);
}

void lost(void*, wl_registry*, std::uint32_t) {}

bool carryOut(const std::string& line, wl_display* display) {
  std::istringstream words(line);
  std::string what;
  std::string uuid;
  words >> what;
  if (what == "windows") {
    // One more answer, for what windows are told of only now.
    wl_display_roundtrip(display);
    wl_display_roundtrip(display);
    windows->print(std::cout);
    return true;
  }
  if (what == "activate")
    return words >> uuid && windows->activate(uuid);
  unsigned first = 0;
  unsigned second = 0;
  if (!(words >> first >> second))
    return false;
  if (what == "key")
    org_kde_kwin_fake_input_keyboard_key(input, first, second);
  else if (what == "button")
    org_kde_kwin_fake_input_button(input, first, second);
  else if (what == "move")
    org_kde_kwin_fake_input_pointer_motion_absolute(input,
                                                    wl_fixed_from_int(static_cast<int>(first)),
                                                    wl_fixed_from_int(static_cast<int>(second)));
  else
    return false;
  return true;
}

}  // namespace

int main() {
  wl_display* display = wl_display_connect(nullptr);
  if (!display) {
    std::cerr << "no compositor\n";
    return 1;
  }
  const wl_registry_listener listener{found, lost};
  wl_registry_add_listener(wl_display_get_registry(display), &listener, nullptr);
  wl_display_roundtrip(display);
  if (!input || !windows) {
    std::cerr << "the compositor has no fake input, or tells no windows\n";
    return 1;
  }
  org_kde_kwin_fake_input_authenticate(input, "Tavin's tests", "to press keys");
  std::cout << "ok" << std::endl;
  for (std::string line; std::getline(std::cin, line);) {
    if (!carryOut(line, display) || wl_display_roundtrip(display) < 0) {
      std::cerr << "failed: " << line << '\n';
      return 1;
    }
    std::cout << "ok" << std::endl;
  }
  return 0;
}
