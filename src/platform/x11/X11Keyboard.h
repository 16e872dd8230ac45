#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Keyboard.h"
#include "platform/x11/ActiveWindow.h"

namespace tavin::x11 {

// Types through XTEST. The one event that it makes is the copy command, and it arrives as
// Control+Insert: Control+C would end what runs in a terminal. Between two events no key is held,
// so either of them may stay away. Work queue only.
class X11Keyboard final : public Keyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys. Null without a display.
  static std::unique_ptr<X11Keyboard> create(std::function<bool()> mayCopy);

  // Whether the display lets us type at all. Any thread.
  bool canType() const { return canType_; }

  std::uint64_t flagsState() override;
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) override;

 private:
  struct Chord;
  class CopyEvent;
  class ReleasedEvent;

  X11Keyboard(std::unique_ptr<Connection> connection, std::function<bool()> mayCopy);
  std::optional<Chord> prepareChord();

  const std::unique_ptr<Connection> connection_;
  const std::function<bool()> mayCopy_;
  const ActiveWindow activeWindow_;
  const bool canType_;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool chordMade_ = false;
};

}  // namespace tavin::x11
