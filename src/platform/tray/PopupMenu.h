#pragma once

#include <QPoint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Menu.h"
#include "platform/windowlink/Messages.h"

namespace tavin::windowlink {
class WindowProgram;
}

namespace tavin::tray {

class MenuSource;

// The items as lines to draw; the command with number N is appended to `commands` as the Nth.
std::vector<windowlink::MenuLine> linesOf(const Menu& menu, std::vector<MenuItem>& commands);

// The menu shown by ourselves, for where no panel does it. One is open at a time. Main thread only.
class PopupMenu {
 public:
  // `source` must outlive this object.
  PopupMenu(MenuSource& source, std::shared_ptr<windowlink::WindowProgram> program);
  ~PopupMenu();
  PopupMenu(const PopupMenu&) = delete;
  PopupMenu& operator=(const PopupMenu&) = delete;

  // Fills the menu and opens it in front, with the keyboard; without a position at the icon in an
  // old-style tray, else at the pointer. Returns at once; does nothing while it is open already.
  void open(std::optional<QPoint> position);

 private:
  MenuSource& source_;
  const std::shared_ptr<windowlink::WindowProgram> program_;
  bool isOpen_ = false;
};

}  // namespace tavin::tray
