#pragma once

class QWidget;

namespace tavin::widgets {

// Keeps trying for a moment to get the pointer and the keyboard for a pop-up that has just opened:
// whoever asked for it (a panel's button, a window manager's key binding) may hold them until the
// button or key is released, and a menu without them cannot be dismissed.
void holdInput(QWidget& popup);

}  // namespace tavin::widgets
