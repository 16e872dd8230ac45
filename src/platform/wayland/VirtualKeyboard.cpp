#include "platform/wayland/VirtualKeyboard.h"

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <utility>

#include "platform/posix/FileDescriptor.h"

namespace tavin::wayland {
namespace {

constexpr double secondsForKeyboard = 1;
constexpr std::uint32_t controlModifier = 1 << 2;

// A whole keyboard: programs make nothing of one that has the two keys alone. The compositor fills
// in what is included.
constexpr char keymapText[] =
    "xkb_keymap {"
    "  xkb_keycodes { include \"evdev+aliases(qwerty)\" };"
    "  xkb_types { include \"complete\" };"
    "  xkb_compat { include \"complete\" };"
    "  xkb_symbols { include \"pc+us+inet(evdev)\" };"
    "};";

posix::FileDescriptor keymapFile() {
  posix::FileDescriptor file(memfd_create("keymap", MFD_CLOEXEC));
  if (write(file.get(), keymapText, sizeof(keymapText)) != sizeof(keymapText))
    file.reset();
  return file;
}

std::uint32_t milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

}  // namespace

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::create() {
  const Deadline deadline = Deadline::in(secondsForKeyboard);
  auto connection = Connection::open(deadline);
  if (!connection || !connection->seat())
    return nullptr;
  const auto manager = connection->bind<zwp_virtual_keyboard_manager_v1>(
      zwp_virtual_keyboard_manager_v1_interface, 1);
  const auto file = keymapFile();
  if (!manager || !file)
    return nullptr;
  Owned<zwp_virtual_keyboard_v1> keyboard(
      zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager.get(), connection->seat()));
  zwp_virtual_keyboard_v1_keymap(keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(),
                                 sizeof(keymapText));
  connection->bindingIsDone();
  if (!connection->roundTrip(deadline))
    return nullptr;
  return std::unique_ptr<VirtualKeyboard>(
      new VirtualKeyboard(std::move(connection), std::move(keyboard)));
}

VirtualKeyboard::VirtualKeyboard(std::unique_ptr<Connection> connection,
                                 Owned<zwp_virtual_keyboard_v1> keyboard)
    : connection_(std::move(connection)), keyboard_(std::move(keyboard)) {}

// All of it reaches the compositor in one piece, or nothing does: this process may end at any
// moment, and a key that it held down then would go on being held. When this returns, the
// compositor has done it all.
void VirtualKeyboard::type() {
  const auto key = [this](std::uint32_t code, wl_keyboard_key_state state) {
    zwp_virtual_keyboard_v1_key(keyboard_.get(), milliseconds(), code, state);
  };
  key(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_PRESSED);
  zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), controlModifier, 0, 0, 0);
  key(KEY_INSERT, WL_KEYBOARD_KEY_STATE_PRESSED);
  key(KEY_INSERT, WL_KEYBOARD_KEY_STATE_RELEASED);
  key(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_RELEASED);
  zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), 0, 0, 0, 0);
  connection_->roundTrip(Deadline::in(secondsForKeyboard));
}

}  // namespace tavin::wayland
