#include "platform/kde/QtKey.h"

#include <Qt>

#include "platform/HotkeyService.h"

namespace tavin::kde {

std::optional<int> qtKey(std::uint32_t keyCode, std::uint32_t modifiers, int inPlaceOfR) {
  using namespace HotkeyModifiers;
  if ((modifiers & ~HotkeyModifiers::all) != 0)
    return std::nullopt;
  if (keyCode != HotkeyKeys::escape && keyCode != HotkeyKeys::ansiR)
    return std::nullopt;
  std::uint32_t key = keyCode == HotkeyKeys::escape ? std::uint32_t{Qt::Key_Escape}
                                                    : static_cast<std::uint32_t>(inPlaceOfR);
  if (key == 0)
    return std::nullopt;
  key |= (modifiers & cmdKey) != 0 ? Qt::META : 0U;
  key |= (modifiers & shiftKey) != 0 ? Qt::SHIFT : 0U;
  key |= (modifiers & optionKey) != 0 ? Qt::ALT : 0U;
  key |= (modifiers & controlKey) != 0 ? Qt::CTRL : 0U;
  return static_cast<int>(key);
}

}  // namespace tavin::kde
