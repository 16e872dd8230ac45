// Works the keyboard and the pointer of the compositor that WAYLAND_DISPLAY names, through KWin's
// fake input. Reads requests from standard input, one a line, and answers each with "ok" once the
// compositor has taken it:
//   key CODE 0|1      a kernel key code, up or down
//   move X Y          the pointer, in pixels
//   button CODE 0|1   a kernel button code, up or down
#include <wayland-client.h>

#include <cstdint>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>

#include "fake-input-client-protocol.h"

namespace {

constexpr std::uint32_t keyboardVersion = 4;
org_kde_kwin_fake_input* input = nullptr;

void found(void*, wl_registry* registry, std::uint32_t name, const char* interface,
           std::uint32_t version) {
  if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0 &&
      version >= keyboardVersion)
    input = static_cast<org_kde_kwin_fake_input*>(
        wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, keyboardVersion));
}

void lost(void*, wl_registry*, std::uint32_t) {}

bool carryOut(const std::string& line) {
  std::istringstream words(line);
  std::string what;
  unsigned first = 0;
  unsigned second = 0;
  if (!(words >> what >> first >> second))
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
  if (!input) {
    std::cerr << "the compositor has no fake input\n";
    return 1;
  }
  org_kde_kwin_fake_input_authenticate(input, "Tavin's tests", "to press keys");
  std::cout << "ok" << std::endl;
  for (std::string line; std::getline(std::cin, line);) {
    if (!carryOut(line) || wl_display_roundtrip(display) < 0) {
      std::cerr << "failed: " << line << '\n';
      return 1;
    }
    std::cout << "ok" << std::endl;
  }
  return 0;
}
