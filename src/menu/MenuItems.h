#pragma once

#include <QString>
#include <memory>

#include "platform/Menu.h"

namespace tavin {

// The kinds of line that the menu is made of. Stateless.

// With a key label the title ends in a tab and that label, shown at the right; it is never a key
// equivalent.
MenuItem commandItem(const QString& title, MenuAction action, const QString& keyLabel = {});
// A line that only says something.
MenuItem disabledLine(const QString& title);
MenuItem separatorItem();
MenuItem submenuItem(const QString& title, std::shared_ptr<Menu> submenu);
// An item of a submenu of which one is marked.
template <typename Value>
MenuItem choiceItem(const QString& title, MenuAction action, Value value, bool chosen) {
  MenuItem item = commandItem(title, action);
  item.representedObject = value;
  item.state = chosen;
  return item;
}

// A number followed by "x", with at most six significant digits in any locale: "1.25x", with the
// decimal point of the catalogue.
QString speedText(double speed);
// The first `count` characters as a reader counts them.
QString firstCharacters(const QString& text, int count);

}  // namespace tavin
