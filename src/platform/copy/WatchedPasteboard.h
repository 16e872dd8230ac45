#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/Pasteboard.h"

namespace tavin::copy {

// Where a desktop tells that there was input but not which, what comes so soon after the beginning
// of a watch is the end of the shortcut's press.
constexpr std::chrono::milliseconds shortcutsPress{500};

// What a desktop tells of the clipboard's changes since a watch over them began.
struct ClipboardChanges {
  std::int64_t count = 0;
  // The first was made by the program that had the keyboard when the watch began.
  bool fromTarget = false;
  // The user pressed a key or a button before the last of them, or it is not known that he did not.
  bool userActed = false;
};

// A desktop's clipboard, which can tell whose a change is. One thread at a time, save string(),
// which may run beside the others, but not beside pasteboardItems().
class WatchedPasteboard : public Pasteboard {
 public:
  // Begins anew with the program that has the keyboard now: what was before is no change.
  // `onChange` is called after each change from now on, by any thread; it must return at once and
  // call nothing here. Bounded in time, as the others are.
  virtual void beginWatch(std::function<void()> onChange) = 0;
  virtual void endWatch() = 0;
  // Everything that happened before the call. None without a watch.
  virtual ClipboardChanges watched() = 0;
};

}  // namespace tavin::copy
