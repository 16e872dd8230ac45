#pragma once

#include <QString>

#include "platform/Menu.h"

namespace tavin {

// The icon in the panel and the menu that opens from it. Main thread only. Appears whenever there
// is a panel that can show it, also one that starts later or restarts.
class StatusItem {
 public:
  virtual ~StatusItem() = default;
  // `symbolName` is "waveform" or "waveform.circle.fill", seen well on a panel of any colour.
  virtual void setImage(const QString& symbolName, const QString& accessibilityDescription) = 0;
  // Not owned; must outlive the status item. Its delegate fills it before each opening.
  virtual void setMenu(Menu* menu) = 0;
  // Opens the menu without the panel: at the pointer or, where that cannot be done, as a window.
  virtual void popUpMenu() = 0;
};

}  // namespace tavin
