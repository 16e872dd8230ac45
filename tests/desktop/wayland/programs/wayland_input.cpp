// The keyboard and the pointer of a test's user, for as long as it runs: the seat must not lose
// its keyboard in between. Reads commands from standard input, a line each, and answers each with
// "done" once the compositor has carried it out:
//   key CODE 1|0         a key by the kernel's number goes down or up
//   move X Y WIDTH HEIGHT
//   button CODE 1|0
#include <sys/mman.h>

#include <chrono>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/Connection.h"
#include "wlr-virtual-pointer-unstable-v1-client-protocol.h"

namespace {

using tavin::Deadline;
using tavin::wayland::Connection;

constexpr char keymap[] =
    "xkb_keymap { xkb_keycodes { include \"evdev+aliases(qwerty)\" };"
    "xkb_types { include \"complete\" }; xkb_compat { include \"complete\" };"
    "xkb_symbols { include \"pc+us+inet(evdev)\" }; };";
// Shift, Control, Alt and Super on either side, by their bits in a keymap.
const std::map<unsigned, unsigned> modifierBits{{42, 1}, {54, 1},  {29, 4},   {97, 4},
                                                {56, 8}, {100, 8}, {125, 64}, {126, 64}};

unsigned now() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<unsigned>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

struct DestroyManager {
  void operator()(zwlr_virtual_pointer_manager_v1* p) const {
    zwlr_virtual_pointer_manager_v1_destroy(p);
  }
};

class Input {
 public:
  explicit Input(Connection& connection) {
    const auto keyboards = connection.bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    const auto pointers = connection.bind<zwlr_virtual_pointer_manager_v1, DestroyManager>(
        zwlr_virtual_pointer_manager_v1_interface, 1);
    keyboard_ =
        zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards.get(), connection.seat());
    const tavin::posix::FileDescriptor file(memfd_create("keymap", MFD_CLOEXEC));
    if (write(file.get(), keymap, sizeof(keymap)) == sizeof(keymap))
      zwp_virtual_keyboard_v1_keymap(keyboard_, 1, file.get(), sizeof(keymap));
    pointer_ =
        zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers.get(), connection.seat());
  }

  void carryOut(const std::string& line) {
    std::istringstream words(line);
    std::string command;
    unsigned a = 0, b = 0, c = 0, d = 0;
    words >> command >> a >> b >> c >> d;
    if (command == "key")
      key(a, b);
    else if (command == "move")
      zwlr_virtual_pointer_v1_motion_absolute(pointer_, now(), a, b, c, d);
    else if (command == "button")
      zwlr_virtual_pointer_v1_button(pointer_, now(), a, b);
    if (command != "key")
      zwlr_virtual_pointer_v1_frame(pointer_);
  }

 private:
  void key(unsigned code, unsigned down) {
    zwp_virtual_keyboard_v1_key(keyboard_, now(), code, down);
    const auto bit = modifierBits.find(code);
    if (bit == modifierBits.end())
      return;
    held_ = down != 0 ? held_ | bit->second : held_ & ~bit->second;
    zwp_virtual_keyboard_v1_modifiers(keyboard_, held_, 0, 0, 0);
  }

  zwp_virtual_keyboard_v1* keyboard_ = nullptr;
  zwlr_virtual_pointer_v1* pointer_ = nullptr;
  unsigned held_ = 0;
};

}  // namespace

int main() {
  const auto connection = Connection::open(Deadline::in(10));
  if (!connection || connection->offered("zwp_virtual_keyboard_manager_v1") == 0 ||
      connection->offered("zwlr_virtual_pointer_manager_v1") == 0) {
    std::cerr << "no compositor with virtual input\n";
    return 1;
  }
  Input input(*connection);
  std::string line;
  do {
    input.carryOut(line);
    if (!connection->roundTrip(Deadline::in(10)))
      return 1;
    std::cout << "done" << std::endl;
  } while (std::getline(std::cin, line));
  return 0;
}
