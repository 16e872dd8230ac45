#pragma once

#include <string>

#include "platform/Deadline.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// What the user's keyboard puts on each key, as the compositor gives it to every program, and
// afresh after each change. The thread of its connection alone.
class Keymap {
 public:
  // Known after two round trips. `connection` must outlive it. Before its binding is done.
  explicit Keymap(Connection& connection);
  Keymap(const Keymap&) = delete;
  Keymap& operator=(const Keymap&) = delete;

  // In the format of XKB; empty where there is no keyboard, or nothing was told yet.
  const std::string& text() const { return text_; }

 private:
  void devicesChanged(std::uint32_t devices);
  void take(std::uint32_t format, std::int32_t file, std::uint32_t size);

  Owned<wl_seat> seat_;
  Owned<wl_keyboard> keyboard_;
  std::string text_;
};

// The same, now, over a connection of its own. Empty also where there is no compositor, or no
// answer in time. Any thread.
std::string readKeymap(Deadline deadline);

}  // namespace tavin::wayland
