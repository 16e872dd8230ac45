#include "platform/wayland/Keymap.h"

#include <sys/mman.h>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/Listener.h"

namespace tavin::wayland {

Keymap::Keymap(Connection& connection) : seat_(connection.bind<wl_seat>(wl_seat_interface, 1)) {
  static constexpr wl_seat_listener events{.capabilities = calls<&Keymap::devicesChanged>,
                                           .name = ignored};
  if (seat_)
    wl_seat_add_listener(seat_.get(), &events, this);
}

void Keymap::devicesChanged(std::uint32_t devices) {
  static constexpr auto events = [] {
    auto table = ignoringAll<wl_keyboard_listener>();
    table.keymap = calls<&Keymap::take>;
    return table;
  }();
  if ((devices & WL_SEAT_CAPABILITY_KEYBOARD) == 0 || keyboard_)
    return;
  keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
  wl_keyboard_add_listener(keyboard_.get(), &events, this);
}

void Keymap::take(std::uint32_t format, std::int32_t file, std::uint32_t size) {
  const posix::FileDescriptor owned(file);
  if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
    return;
  void* text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (text == MAP_FAILED)
    return;
  // It ends with a null byte.
  text_ = std::string(static_cast<const char*>(text), size > 0 ? size - 1 : 0);
  munmap(text, size);
}

std::string readKeymap(Deadline deadline) {
  const auto connection = Connection::open(deadline);
  if (!connection)
    return {};
  const Keymap keymap(*connection);
  // The first brings the keyboard, the second its keymap.
  return connection->roundTrip(deadline) && connection->roundTrip(deadline) ? keymap.text()
                                                                            : std::string();
}

}  // namespace tavin::wayland
