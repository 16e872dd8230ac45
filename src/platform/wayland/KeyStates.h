#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Whether KWin lets go of a key that the user holds when another program releases it. It did up to
// Plasma 5, whose sessions say so.
bool kwinReleasesHeldKeys();

// Which modifiers the user holds down. KWin tells it in Plasma 6, where no program can release a
// key that another keyboard holds. Work queue only, save its making.
class KeyStates {
 public:
  // Null where the compositor does not tell it. The one on a connection of its own is null also
  // where that is not answered in time.
  static std::unique_ptr<KeyStates> create(Deadline deadline);
  static std::unique_ptr<KeyStates> on(std::shared_ptr<Connection> connection);

  // Those held now, as EventFlags; bounded by a tenth of a second. Where no answer came it says
  // Alt: the key that the user pressed last may be down still, and would join the command.
  std::uint64_t modifiers();
  // Whether the compositor has gone: nothing more is told.
  bool haveEnded() const { return connection_->isBroken(); }

 private:
  explicit KeyStates(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

  const std::shared_ptr<Connection> connection_;
};

}  // namespace tavin::wayland
