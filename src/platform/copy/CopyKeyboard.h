#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Keyboard.h"

namespace tavin::copy {

// A keyboard whose one event is the copy command, which arrives as Control+Insert: Control+C would
// end what runs in a terminal. The key going down types the whole chord, so that between two events
// no key is held, and either of them may stay away. Work queue only.
class CopyKeyboard : public Keyboard {
 public:
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) final;

  // Whether a copy can be made at all now, from the program in front. Where the user's leave is
  // missing, asking begins, and the answer is no meanwhile.
  virtual bool isReady() { return mayCopy_(); }
  // From now on nothing is typed. Any thread.
  void close() { closed_ = true; }
  // How often the command was typed so far.
  int chordsTyped() const { return chordsTyped_; }

 protected:
  // `mayCopy` tells whether the program in front may get the keys.
  explicit CopyKeyboard(std::function<bool()> mayCopy) : mayCopy_(std::move(mayCopy)) {}

 private:
  class CopyEvent;
  class ReleasedEvent;

  // Whether the chord can be typed and the program in front may get it: not while a modifier is
  // held that would join it. What the chord needs is kept until it is typed, if ever.
  virtual bool prepareChord() { return isReady() && flagsState() == 0; }
  // Presses and releases the keys; when it returns, the program in front has been sent them all.
  virtual void typeChord() = 0;

  const std::function<bool()> mayCopy_;
  std::atomic<bool> closed_ = false;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool chordMade_ = false;
  int chordsTyped_ = 0;
};

}  // namespace tavin::copy
