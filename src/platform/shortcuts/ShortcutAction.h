#pragma once

#include <QString>

#include "platform/HotkeyService.h"

namespace tavin::shortcuts {

// The name of what a combination does, for desktops that show it or run it: the shortcut that
// pauses is always the one that speaks with Shift added.
inline QString shortcutAction(std::uint32_t modifiers) {
  return (modifiers & HotkeyModifiers::shiftKey) != 0 ? QStringLiteral("pause")
                                                      : QStringLiteral("speak");
}

// The same for the user's eye.
inline QString shortcutTitle(std::uint32_t modifiers) {
  return (modifiers & HotkeyModifiers::shiftKey) != 0 ? QStringLiteral("Pause or Resume")
                                                      : QStringLiteral("Speak Selection or Stop");
}

}  // namespace tavin::shortcuts
