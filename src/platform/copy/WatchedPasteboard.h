#pragma once

#include <functional>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/copy/UserInput.h"

namespace tavin::copy {

// A change of the clipboard that another program made.
struct ClipboardChange {
  // Made by the program that had the keyboard when the watch began.
  bool fromTarget = false;
  // What the user had pressed before, since the watch began.
  UserInput input;
};

// A desktop's clipboard, which can tell whose a change is. One thread at a time, save string(),
// which may run beside the others, but not beside pasteboardItems().
class WatchedPasteboard : public Pasteboard {
 public:
  // Begins again with the program that has the keyboard now: what was before is no change.
  // `onChange` is called after each change from now on, by any thread; it must return at once and
  // call nothing here. Bounded in time, as the others are.
  virtual void beginWatch(std::function<void()> onChange) = 0;
  virtual void endWatch() = 0;
  // Everything that happened before the call and was not taken yet, each change once, in their
  // order. None without a watch.
  virtual std::vector<ClipboardChange> takeChanges() = 0;
  // One of our shortcuts was pressed, which arrived then: its keys are no input.
  virtual void shortcutArrived(UserInput::Time time) = 0;
};

}  // namespace tavin::copy
