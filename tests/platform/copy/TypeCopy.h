#pragma once

#include "platform/Keyboard.h"

namespace tavin::test {

inline constexpr std::uint16_t kCopyKey = 8;

// Types the copy command. True where both events could be made.
inline bool typeCopy(Keyboard& keyboard, std::uint64_t flags = EventFlags::command) {
  bool made = true;
  for (const bool down : {true, false}) {
    const auto event = keyboard.createKeyboardEvent(kCopyKey, down);
    made = made && event;
    if (!event)
      continue;
    event->setFlags(flags);
    event->post();
  }
  return made;
}

}  // namespace tavin::test
