#pragma once

#include <functional>
#include <memory>

#include "platform/Accessibility.h"
#include "platform/Keyboard.h"
#include "platform/Pasteboard.h"

namespace tavin::capture {

// What reads the selected text on a desktop. The three share their connections and keep them alive
// together, so they live as long as each other; none may be used by a thread that outlives them.
struct Capture {
  std::unique_ptr<Accessibility> accessibility;
  std::unique_ptr<Keyboard> keyboard;
  std::unique_ptr<Pasteboard> pasteboard;
  // To be called before the process ends: from then on nothing is copied. Waits for a copy that was
  // asked for and has not come, half a second at most; then what we serve on the clipboard is given
  // to the session's clipboard manager, where there is a way to, in two seconds at most. Any
  // thread.
  std::function<void()> handOver;
  // To be called when one of our shortcuts was pressed, or a key binding of the user's that runs
  // "speak", before anything else is done about it: its keys show nothing of a copy of the user's
  // own. Any thread, returns at once.
  std::function<void()> shortcutArrived;
  // To be called right before a command chosen in the tray menu is carried out: the next capture
  // then waits, for half a second at most, until the menu has given the keyboard back to the
  // program that had it. Any thread, returns at once.
  std::function<void()> menuCommandChosen;
};

}  // namespace tavin::capture
