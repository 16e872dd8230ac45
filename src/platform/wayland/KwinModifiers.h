#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Whether KWin releases a key that the user holds when another program releases it. It did up to
// Plasma 5, whose sessions say so.
bool kwinReleasesHeldKeys();

// Which modifiers the user holds down. KWin tells it in Plasma 6, where no program can release a
// key that another keyboard holds. Work queue only, save its making.
class KwinModifiers {
 public:
  // Null where the compositor does not tell it. The one on a connection of its own is null also
  // where that is not answered in time; it connects again where the compositor was started again.
  static std::unique_ptr<KwinModifiers> create(Deadline deadline);
  static std::unique_ptr<KwinModifiers> on(std::shared_ptr<Connection> connection);

  // Those held now, as EventFlags; bounded by a tenth of a second, and by half a one where it
  // connects again. Where no answer came it says Alt: the key that the user pressed last may be
  // down still, and would join the command.
  std::uint64_t modifiers();

 private:
  explicit KwinModifiers(std::shared_ptr<Connection> connection)
      : connection_(std::move(connection)) {}
  static bool toldOn(const Connection& connection);
  void reconnect();

  std::shared_ptr<Connection> connection_;
  bool ownsConnection_ = false;
};

}  // namespace tavin::wayland
