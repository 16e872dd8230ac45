#include "platform/wayland/Keymap.h"

#include <sys/mman.h>

#include "platform/posix/FileDescriptor.h"

namespace tavin::wayland {

struct Keymap::Events {
  static void capabilities(void* self, wl_seat* seat, std::uint32_t devices) {
    auto& map = *static_cast<Keymap*>(self);
    if ((devices & WL_SEAT_CAPABILITY_KEYBOARD) == 0 || map.keyboard_)
      return;
    map.keyboard_.reset(wl_seat_get_keyboard(seat));
    wl_keyboard_add_listener(map.keyboard_.get(), &keyboard, self);
  }
  static void keymap(void* self, wl_keyboard*, std::uint32_t format, std::int32_t file,
                     std::uint32_t size) {
    static_cast<Keymap*>(self)->take(format, file, size);
  }
  template <typename... Arguments>
  static void ignore(void*, wl_keyboard*, Arguments...) {}

  static constexpr wl_seat_listener seat{.capabilities = capabilities,
                                         .name = nullptr};  // Of later versions.
  static constexpr wl_keyboard_listener keyboard{.keymap = keymap,
                                                 .enter = ignore,
                                                 .leave = ignore,
                                                 .key = ignore,
                                                 .modifiers = ignore,
                                                 .repeat_info = ignore};
};

Keymap::Keymap(Connection& connection) : seat_(connection.bind<wl_seat>(wl_seat_interface, 1)) {
  if (seat_)
    wl_seat_add_listener(seat_.get(), &Events::seat, this);
}

void Keymap::take(std::uint32_t format, int file, std::uint32_t size) {
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
