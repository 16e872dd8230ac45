#include <gmock/gmock.h>

#include "SampleMenu.h"
#include "platform/desktop/Catalogue.h"
#include "platform/tray/NumberedMenu.h"

namespace tavin::tray {
namespace {

using namespace tavin::test;

std::vector<const MenuNode*> shown(const NumberedMenu& layout) {
  std::vector<const MenuNode*> nodes;
  for (const MenuNode& node : layout.root().children)
    if (node.properties.value("visible").toBool())
      nodes.push_back(&node);
  return nodes;
}

QStringList labels(const std::vector<const MenuNode*>& nodes) {
  QStringList result;
  for (const MenuNode* node : nodes) result.append(node->properties.value("label").toString());
  return result;
}

std::vector<int> ids(const std::vector<MenuNode>& nodes) {
  std::vector<int> result;
  for (const MenuNode& node : nodes) result.push_back(node.id);
  return result;
}

TEST(NumberedMenu, ShowsTheItemsInOrder) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {command("one"), submenu("two", {}), separator(), command("three")};
  layout.update(menu);
  EXPECT_EQ(labels(shown(layout)), QStringList({"one", "two", "", "three"}));
  EXPECT_EQ(shown(layout)[2]->properties.value("type"), "separator");
}

TEST(NumberedMenu, FromRightToLeftTheSignsOfAShortcutKeepTheirOrder) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {command("one\t⌥ Esc"), command("⌃⌥ R"), command("two")};
  layout.update(menu);
  EXPECT_EQ(labels(shown(layout)), QStringList({"one\t⌥ Esc", "⌃⌥ R", "two"}));
  desktop::setRightToLeft(true);
  layout.update(menu);
  desktop::setRightToLeft(false);
  EXPECT_EQ(labels(shown(layout)),
            QStringList({"one\t\u2066⌥ Esc\u2069", "\u2066⌃⌥ R\u2069", "two"}));
}

// GNOME's shell shows each separator that has a visible line before and after it, hidden or not.
int separatorsInGnome(const NumberedMenu& layout) {
  bool between = false;
  int count = 0;
  for (const MenuNode& node : layout.root().children) {
    if (node.properties.value("type") == "separator") {
      between = true;
    } else if (node.properties.value("visible").toBool()) {
      count += between ? 1 : 0;
      between = false;
    }
  }
  return count;
}

TEST(NumberedMenu, NoHiddenSeparatorStandsBetweenTheLinesOfTheMenu) {
  NumberedMenu layout;
  const auto login = [] {
    MenuItem item = command("login");
    item.action = MenuAction::toggleLogin;
    return item;
  };
  Menu menu;
  menu.items = {
      command("speak"),     command("pause"), command("warning"),    submenu("shortcut", {}),
      separator(),          command("state"), submenu("engine", {}), submenu("voice", {}),
      submenu("speed", {}), separator(),      submenu("key", {}),    login(),
      command("log"),       separator(),      command("quit")};
  layout.update(menu);
  EXPECT_EQ(separatorsInGnome(layout), 3);
  menu.items = {command("speak"), command("pause"), submenu("shortcut", {}),
                separator(),      command("state"), login(),
                command("log"),   separator(),      command("quit")};
  layout.update(menu);
  EXPECT_EQ(separatorsInGnome(layout), 2);
}

TEST(NumberedMenu, RootLinesStayWhateverTheMenuHolds) {
  NumberedMenu layout;
  const std::vector<int> before = ids(layout.root().children);
  Menu menu;
  menu.items = {command("a"), separator(), command("b", MenuAction::toggleLogin)};
  EXPECT_THAT(layout.update(menu).children, ::testing::IsEmpty());
  menu.items = {separator(), submenu("s", {}), submenu("t", {}), command("c"), command("d")};
  const auto changes = layout.update(menu);
  EXPECT_EQ(ids(layout.root().children), before);
  EXPECT_EQ(labels(shown(layout)), QStringList({"", "s", "t", "c", "d"}));
  EXPECT_TRUE(changes.rootSize);
}

TEST(NumberedMenu, NoLineEverChangesItsKind) {
  NumberedMenu layout;
  const auto kinds = [&] {
    QStringList result;
    for (const MenuNode& node : layout.root().children)
      result.append(node.properties.value("type").toString() + '|' +
                    node.properties.value("toggle-type").toString() + '|' +
                    node.properties.value("children-display").toString());
    return result;
  };
  const QStringList before = kinds();
  Menu menu;
  menu.items = {separator(), command("x", MenuAction::toggleLogin), submenu("s", {}), command("a")};
  layout.update(menu);
  EXPECT_EQ(kinds(), before);
}

TEST(NumberedMenu, AnUnchangedMenuChangesNothing) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {command("one"), submenu("two", {choice("a", "a", true)})};
  layout.update(menu);
  const auto changes = layout.update(menu);
  EXPECT_THAT(changes.properties, ::testing::IsEmpty());
  EXPECT_THAT(changes.children, ::testing::IsEmpty());
  EXPECT_FALSE(changes.rootSize);
}

TEST(NumberedMenu, SubmenuOfTheSameShapeKeepsItsNumbers) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {submenu("voices", {choice("a", "a", true), choice("b", "b")})};
  layout.update(menu);
  const std::vector<int> before = ids(shown(layout)[0]->children);
  menu.items = {submenu("voices", {choice("a", "a"), choice("b", "b", true)})};
  const auto changes = layout.update(menu);
  EXPECT_EQ(ids(shown(layout)[0]->children), before);
  EXPECT_EQ(changes.properties, before);
  EXPECT_THAT(changes.children, ::testing::IsEmpty());
}

TEST(NumberedMenu, SubmenuOfAnotherShapeGetsNewNumbers) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {submenu("voices", {disabled("Loading…")})};
  layout.update(menu);
  const int old = shown(layout)[0]->children[0].id;
  menu.items = {submenu("voices", {choice("a", "a"), choice("b", "b")})};
  const auto changes = layout.update(menu);
  EXPECT_THAT(changes.children, ::testing::ElementsAre(shown(layout)[0]->id));
  EXPECT_EQ(layout.find(old), nullptr);
  EXPECT_EQ(shown(layout)[0]->children.size(), 2U);
}

TEST(NumberedMenu, AMenuBeyondThePoolIsShownWhole) {
  NumberedMenu layout;
  Menu menu;
  for (int i = 0; i < 200; ++i) menu.items.push_back(command(QString::number(i)));
  EXPECT_THAT(layout.update(menu).children, ::testing::ElementsAre(0));
  EXPECT_EQ(shown(layout).size(), 200U);
  EXPECT_THAT(layout.update(menu).children, ::testing::IsEmpty());
}

TEST(NumberedMenu, EscapesUnderscoresAndKeepsTheRest) {
  NumberedMenu layout;
  Menu menu;
  menu.items = {command("snake_case & <b>\t⌥ Esc")};
  layout.update(menu);
  EXPECT_EQ(labels(shown(layout)), QStringList({"snake__case & <b>\t⌥ Esc"}));
  EXPECT_EQ(shown(layout)[0]->properties.value("accessible-desc"), "snake_case & <b>\t⌥ Esc");
}

TEST(NumberedMenu, EnablesByTheMenusRule) {
  NumberedMenu layout;
  MenuItem off = command("off");
  off.enabled = false;
  Menu menu;
  menu.autoenablesItems = false;
  menu.items = {off, submenu("s", {off, disabled("note")})};
  layout.update(menu);
  EXPECT_FALSE(shown(layout)[0]->properties.value("enabled").toBool());
  const auto& children = shown(layout)[1]->children;
  EXPECT_TRUE(children[0].properties.value("enabled").toBool()) << "it has an action";
  EXPECT_FALSE(children[1].properties.value("enabled").toBool()) << "it has none";
}

TEST(NumberedMenu, ChoicesAreRadioLinesAndTheLoginItemACheckmark) {
  NumberedMenu layout;
  Menu menu;
  MenuItem login = command("Launch at Login", MenuAction::toggleLogin);
  login.state = true;
  menu.items = {login, submenu("s", {choice("a", "a", true), choice("b", "b")})};
  layout.update(menu);
  EXPECT_EQ(shown(layout)[0]->properties.value("toggle-type"), "checkmark");
  EXPECT_EQ(shown(layout)[0]->properties.value("toggle-state"), 1);
  const auto& children = shown(layout)[1]->children;
  EXPECT_EQ(children[0].properties.value("toggle-type"), "radio");
  EXPECT_EQ(children[0].properties.value("toggle-state"), 1);
  EXPECT_EQ(children[1].properties.value("toggle-state"), 0);
}

}  // namespace
}  // namespace tavin::tray
