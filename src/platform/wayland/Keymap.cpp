#include "platform/wayland/Keymap.h"

#include <sys/mman.h>

#include "platform/posix/FileDescriptor.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {
namespace {

template <typename... Arguments>
void ignore(void*, wl_keyboard*, Arguments...) {}

void take(void* keymap, wl_keyboard*, std::uint32_t format, std::int32_t file, std::uint32_t size) {
  const posix::FileDescriptor owned(file);
  if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
    return;
  void* text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (text == MAP_FAILED)
    return;
  *static_cast<std::string*>(keymap) = std::string(static_cast<const char*>(text), size);
  munmap(text, size);
}

}  // namespace

std::string readKeymap(Deadline deadline) {
  const auto connection = Connection::open(deadline);
  if (!connection || !connection->seat())
    return {};
  std::string keymap;
  std::uint32_t devices = 0;
  static constexpr wl_seat_listener seatEvents{
      .capabilities = [](void* found, wl_seat*,
                         std::uint32_t all) { *static_cast<std::uint32_t*>(found) = all; },
      .name = nullptr};  // Of later versions.
  wl_seat_add_listener(connection->seat(), &seatEvents, &devices);
  if (!connection->roundTrip(deadline) || (devices & WL_SEAT_CAPABILITY_KEYBOARD) == 0)
    return {};
  static constexpr wl_keyboard_listener events{.keymap = take,
                                               .enter = ignore,
                                               .leave = ignore,
                                               .key = ignore,
                                               .modifiers = ignore,
                                               .repeat_info = ignore};
  const Owned<wl_keyboard> keyboard(wl_seat_get_keyboard(connection->seat()));
  wl_keyboard_add_listener(keyboard.get(), &events, &keymap);
  connection->roundTrip(deadline);
  return keymap;
}

}  // namespace tavin::wayland
