#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/gnome/HeldModifiers.h"
#include "platform/x11/ActiveWindow.h"
#include "platform/x11/Connection.h"

namespace tavin::gnome {

// The modifiers that the user holds, as Xwayland's display knows them: it is told of every key, but
// only while one of its windows has the keyboard. Finds the display again after it was restarted.
// Work queue only.
class XwaylandModifiers {
 public:
  // As EventFlags. None where no window of Xwayland's has the keyboard, or Xwayland hangs.
  std::optional<std::uint64_t> flags();

 private:
  bool connect();

  std::unique_ptr<x11::Connection> connection_;
  std::optional<x11::ActiveWindow> activeWindow_;
};

// The modifiers held now, as EventFlags: as Xwayland tells it, and `modifiers` where that does not
// know. Work queue only.
std::function<std::uint64_t()> heldModifiersNow(std::shared_ptr<HeldModifiers> modifiers);

}  // namespace tavin::gnome
