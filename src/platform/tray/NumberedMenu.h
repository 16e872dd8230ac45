#pragma once

#include <QVariantMap>
#include <vector>

#include "platform/Menu.h"

namespace tavin::tray {

// A line of the exported menu.
struct MenuNode {
  int id = 0;
  QVariantMap properties;  // As com.canonical.dbusmenu names them.
  MenuItem item;           // What is drawn there; says nothing while the node is hidden.
  std::vector<MenuNode> children;
};

// The menu as panels see it: numbered lines with properties. Some panels close a menu that gains or
// loses root lines while it opens, and none lets a line change its kind. So the root is a fixed
// pool of lines of every kind that are relabelled, shown and hidden; the lines of a submenu keep
// their numbers while their kinds stay the same and get new ones otherwise.
class NumberedMenu {
 public:
  struct Changes {
    std::vector<int> properties;  // Lines that look different now.
    std::vector<int> children;    // Lines (0 is the root) that hold other lines now.
    bool rootSize = false;        // Other root lines are shown than before.
  };

  NumberedMenu();
  // Draws the menu's present items.
  Changes update(const Menu& menu);
  const MenuNode& root() const { return root_; }
  // Null where there is no such line (any more).
  const MenuNode* find(int id) const;

 private:
  void show(MenuNode& node, const Menu& menu, const MenuItem& item, Changes& changes);
  void updateChildren(MenuNode& node, const Menu& menu, Changes& changes);

  MenuNode root_;
  int nextId_ = 1;
};

}  // namespace tavin::tray
