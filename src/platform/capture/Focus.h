#pragma once

#include <optional>

#include "platform/atspi/FocusFinder.h"
#include "platform/windows/WindowSystem.h"

namespace tavin::capture {

// What has the keyboard: the window in front and, where its program is on the accessibility bus,
// the object in it.
struct Focus {
  windows::FrontWindow window;
  std::optional<atspi::ObjectRef> program;
  std::optional<atspi::FocusedObject> object;
  // The program shows its windows to accessibility, and there is no text that one could select.
  bool showsNoText = false;

  bool isTerminal() const {
    return window.terminal || (object && object->role == atspi::Role::terminal);
  }
  bool isPassword() const { return object && object->password; }
};

}  // namespace tavin::capture
