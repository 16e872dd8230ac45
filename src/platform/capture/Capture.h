#pragma once

#include <functional>
#include <memory>

#include "platform/Accessibility.h"
#include "platform/Keyboard.h"
#include "platform/copy/Clipboard.h"

namespace tavin::capture {

// What reads the selected text on a desktop. The three share their connections and keep them alive
// together, so they live as long as each other; none may be used by a thread that outlives them.
struct Capture {
  std::unique_ptr<Accessibility> accessibility;
  std::unique_ptr<Keyboard> keyboard;
  copy::Clipboard clipboard;
  // To be called right before a command chosen in the tray menu is carried out: the next capture
  // then waits, for half a second at most, until the menu has given the keyboard back to the
  // program that had it. Any thread, returns at once.
  std::function<void()> menuCommandChosen;
};

}  // namespace tavin::capture
