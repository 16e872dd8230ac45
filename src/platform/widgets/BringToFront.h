#pragma once

class QWidget;

namespace tavin::widgets {

// Brings a window that has just been shown in front of whatever program is active and gives it the
// keyboard. Main thread only.
void bringToFront(QWidget& window);

}  // namespace tavin::widgets
