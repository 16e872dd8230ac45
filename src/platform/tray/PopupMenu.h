#pragma once

#include <QMenu>
#include <QPointer>

#include "platform/Menu.h"

namespace tavin::tray {

class MenuSource;

// Draws the items into an empty `widget`. `source` must outlive it.
void fillMenu(QMenu& widget, const Menu& menu, MenuSource& source);

// The menu drawn by ourselves, for where no panel does it. One is open at a time. Main thread only.
class PopupMenu {
 public:
  // `source` must outlive this object.
  explicit PopupMenu(MenuSource& source) : source_(source) {}
  ~PopupMenu();

  // Fills the menu and opens it in front, with the keyboard. Returns at once; does nothing while it
  // is open already.
  void open(QPoint position);
  void openAtPointer();

 private:
  MenuSource& source_;
  QPointer<QMenu> widget_;
};

}  // namespace tavin::tray
