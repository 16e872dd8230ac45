#include "platform/tray/NumberedMenu.h"

#include <algorithm>

#include "platform/tray/MenuSource.h"

namespace tavin::tray {

namespace {

enum class Kind { plain, checkmark, radio, submenu, separator };

// One separator after each section, because GNOME's shell draws any that has a visible line on both
// sides, a hidden one too: none may stand between the lines of a section.
constexpr int poolSections = 5;
constexpr int groupsOfSection = 4;
constexpr Kind poolGroup[] = {Kind::plain, Kind::checkmark, Kind::submenu};

Kind kindOf(const MenuItem& item) {
  if (item.separator)
    return Kind::separator;
  if (item.submenu)
    return Kind::submenu;
  const Toggle toggle = toggleOf(item);
  if (toggle == Toggle::none)
    return Kind::plain;
  return toggle == Toggle::radio ? Kind::radio : Kind::checkmark;
}

// What a line can never change.
QVariantMap fixedProperties(Kind kind) {
  switch (kind) {
    case Kind::separator:
      return {{"type", "separator"}};
    case Kind::submenu:
      return {{"children-display", "submenu"}};
    case Kind::checkmark:
      return {{"toggle-type", "checkmark"}};
    case Kind::radio:
      return {{"toggle-type", "radio"}};
    case Kind::plain:
      break;
  }
  return {};
}

bool isOfKind(const MenuNode& node, Kind kind) {
  const QVariantMap fixed = fixedProperties(kind);
  const auto same = [&](const char* name) {
    return node.properties.value(name) == fixed.value(name);
  };
  return same("type") && same("children-display") && same("toggle-type");
}

QVariantMap drawnProperties(const Menu& menu, const MenuItem& item) {
  const Kind kind = kindOf(item);
  QVariantMap properties = fixedProperties(kind);
  properties.insert("visible", true);
  if (kind == Kind::separator)
    return properties;
  // A single underscore marks an access key.
  properties.insert("label", drawnTitle(item.title).replace('_', QLatin1String("__")));
  // GTK's panels give a screen reader the first label for good unless they are told.
  properties.insert("accessible-desc", item.title);
  properties.insert("enabled", isEnabled(menu, item));
  if (kind == Kind::checkmark || kind == Kind::radio)
    properties.insert("toggle-state", item.state ? 1 : 0);
  return properties;
}

MenuNode hiddenNode(int id, Kind kind) {
  MenuNode node;
  node.id = id;
  node.properties = fixedProperties(kind);
  node.properties.insert("visible", false);
  return node;
}

void hide(MenuNode& node, NumberedMenu::Changes& changes) {
  node.item = {};
  node.children.clear();
  if (!node.properties.value("visible").toBool())
    return;
  node.properties.insert("visible", false);
  changes.properties.push_back(node.id);
  changes.rootSize = true;
}

const MenuNode* findIn(const MenuNode& node, int id) {
  if (node.id == id)
    return &node;
  for (const MenuNode& child : node.children)
    if (const MenuNode* found = findIn(child, id))
      return found;
  return nullptr;
}

}  // namespace

NumberedMenu::NumberedMenu() {
  root_.properties.insert("children-display", "submenu");
  const auto add = [this](Kind kind) { root_.children.push_back(hiddenNode(nextId_++, kind)); };
  for (int section = 0; section < poolSections; ++section) {
    for (int group = 0; group < groupsOfSection; ++group)
      for (const Kind kind : poolGroup) add(kind);
    add(Kind::separator);
  }
}

NumberedMenu::Changes NumberedMenu::update(const Menu& menu) {
  Changes changes;
  auto& pool = root_.children;
  std::size_t next = 0;
  for (const MenuItem& item : menu.items) {
    const Kind kind = kindOf(item);
    while (next < pool.size() && !isOfKind(pool[next], kind)) hide(pool[next++], changes);
    if (next == pool.size()) {  // A menu this long was not foreseen: better late than cut off.
      pool.push_back(hiddenNode(nextId_++, kind));
      changes.children = {0};
    }
    changes.rootSize |= !pool[next].properties.value("visible").toBool();
    show(pool[next++], menu, item, changes);
  }
  for (; next < pool.size(); ++next) hide(pool[next], changes);
  return changes;
}

void NumberedMenu::show(MenuNode& node, const Menu& menu, const MenuItem& item, Changes& changes) {
  QVariantMap properties = drawnProperties(menu, item);
  if (properties != node.properties) {
    node.properties = std::move(properties);
    changes.properties.push_back(node.id);
  }
  node.item = item;
  if (item.submenu)
    updateChildren(node, *item.submenu, changes);
}

void NumberedMenu::updateChildren(MenuNode& node, const Menu& menu, Changes& changes) {
  const bool sameKinds = std::equal(
      node.children.begin(), node.children.end(), menu.items.begin(), menu.items.end(),
      [](const MenuNode& child, const MenuItem& item) { return isOfKind(child, kindOf(item)); });
  if (!sameKinds) {
    node.children.clear();
    for (const MenuItem& item : menu.items)
      node.children.push_back(hiddenNode(nextId_++, kindOf(item)));
    changes.children.push_back(node.id);
  }
  Changes unannounced;  // Nobody knows the new lines yet.
  for (std::size_t i = 0; i < menu.items.size(); ++i)
    show(node.children[i], menu, menu.items[i], sameKinds ? changes : unannounced);
}

const MenuNode* NumberedMenu::find(int id) const { return findIn(root_, id); }

}  // namespace tavin::tray
