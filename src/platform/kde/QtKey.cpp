#include "platform/kde/QtKey.h"

#include <Qt>

namespace tavin::kde {

std::optional<int> qtKey(const shortcuts::KeyCombination& combination, int inPlaceOfR) {
  using shortcuts::KeyCombination;
  int key = combination.key == KeyCombination::Key::escape ? int{Qt::Key_Escape} : inPlaceOfR;
  if (key == 0)
    return std::nullopt;
  key |= combination.has(KeyCombination::super) ? int{Qt::META} : 0;
  key |= combination.has(KeyCombination::shift) ? int{Qt::SHIFT} : 0;
  key |= combination.has(KeyCombination::alt) ? int{Qt::ALT} : 0;
  key |= combination.has(KeyCombination::control) ? int{Qt::CTRL} : 0;
  return key;
}

}  // namespace tavin::kde
