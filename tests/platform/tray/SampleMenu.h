#pragma once

#include <functional>
#include <vector>

#include "platform/Menu.h"

namespace tavin::test {

inline MenuItem command(const QString& title, MenuAction action = MenuAction::openLog) {
  MenuItem item;
  item.title = title;
  item.action = action;
  return item;
}

inline MenuItem disabled(const QString& title) {
  MenuItem item = command(title, MenuAction::none);
  item.enabled = false;
  return item;
}

inline MenuItem separator() {
  MenuItem item;
  item.separator = true;
  return item;
}

inline MenuItem submenu(const QString& title, std::vector<MenuItem> items) {
  MenuItem item;
  item.title = title;
  item.submenu = std::make_shared<Menu>();
  item.submenu->items = std::move(items);
  return item;
}

inline MenuItem choice(const QString& title, const QString& value, bool state = false) {
  MenuItem item = command(title, MenuAction::selectVoice);
  item.representedObject = value;
  item.state = state;
  return item;
}

// A menu whose contents a test sets, and which notes what is asked of it.
class SampleMenu : public MenuDelegate {
 public:
  SampleMenu() {
    menu.autoenablesItems = false;
    menu.delegate = this;
  }

  void menuNeedsUpdate(Menu& shown) override {
    ++updates;
    shown.items = items;
  }
  void menuNeedsMeasuring(Menu& shown) override {
    ++measurings;
    shown.items = items;
  }
  void perform(const MenuItem& item) override { performed.push_back(item); }

  Menu menu;
  std::vector<MenuItem> items;  // What the menu holds from the next opening on.
  int updates = 0;
  int measurings = 0;
  std::vector<MenuItem> performed;
};

}  // namespace tavin::test
