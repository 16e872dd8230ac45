#pragma once

#include <cstdint>
#include <memory>

namespace tavin {

// Modifier bits of a keyboard state or event.
namespace EventFlags {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
}  // namespace EventFlags

// A key going down or up that has not been sent yet.
class KeyboardEvent {
 public:
  virtual ~KeyboardEvent() = default;
  // Replaces the event's modifiers.
  virtual void setFlags(std::uint64_t flags) = 0;
  // Sends it to the program that has the keyboard.
  virtual void post() = 0;
};

// The keyboard as the session sees it. Work queue only.
class Keyboard {
 public:
  virtual ~Keyboard() = default;
  // The modifiers held down now, as EventFlags.
  virtual std::uint64_t flagsState() = 0;
  // Makes an event for a macOS virtual key code. Null where the platform cannot or must not send
  // it: nothing is ever typed into a terminal or a password field.
  virtual std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) = 0;
};

}  // namespace tavin
