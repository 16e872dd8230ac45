#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Keyboard.h"

namespace tavin::desktop {

// A keyboard whose one event is the copy command, which arrives as Control+Insert: Control+C would
// end what runs in a terminal. The key going down types the whole chord, so that between two events
// no key is held, and either of them may stay away. Work queue only.
class CopyKeyboard : public Keyboard {
 public:
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) final;

 protected:
  // `mayCopy` tells whether the program in front may get the keys.
  explicit CopyKeyboard(std::function<bool()> mayCopy) : mayCopy_(std::move(mayCopy)) {}
  bool mayCopy() const { return mayCopy_(); }

 private:
  class CopyEvent;
  class ReleasedEvent;

  // Whether the chord can be typed and the program in front may get it. What it needs is kept until
  // it is typed, if ever.
  virtual bool prepareChord() { return mayCopy(); }
  // Presses and releases the keys; when it returns, the program in front has been sent them all.
  virtual void typeChord() = 0;

  const std::function<bool()> mayCopy_;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool chordMade_ = false;
};

}  // namespace tavin::desktop
