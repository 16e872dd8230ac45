#include "platform/shortcuts/KeyCombination.h"

#include "platform/HotkeyService.h"

namespace tavin::shortcuts {

std::optional<KeyCombination> KeyCombination::of(std::uint32_t keyCode, std::uint32_t modifiers) {
  using namespace HotkeyModifiers;
  if ((modifiers & ~all) != 0)
    return std::nullopt;
  if (keyCode != HotkeyKeys::escape && keyCode != HotkeyKeys::ansiR)
    return std::nullopt;
  const auto bit = [modifiers](std::uint32_t mask, Modifier modifier) {
    return (modifiers & mask) != 0 ? unsigned{modifier} : 0U;
  };
  const unsigned ours =
      bit(cmdKey, super) | bit(shiftKey, shift) | bit(optionKey, alt) | bit(controlKey, control);
  return KeyCombination{.key = keyCode == HotkeyKeys::escape ? Key::escape : Key::ansiR,
                        .modifiers = static_cast<std::uint8_t>(ours)};
}

}  // namespace tavin::shortcuts
