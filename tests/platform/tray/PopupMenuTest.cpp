#include <gtest/gtest.h>

#include "SampleMenu.h"
#include "TestApplication.h"
#include "platform/tray/MenuSource.h"
#include "platform/tray/PopupMenu.h"

namespace tavin::tray {
namespace {

using namespace tavin::test;

class PopupMenuTest : public ::testing::Test {
 protected:
  QList<QAction*> fill(std::vector<MenuItem> items) {
    sample.menu.items = std::move(items);
    fillMenu(widget, sample.menu, source);
    return widget.actions();
  }

  SampleMenu sample;
  QStringList order;
  MenuSource source{[this] { order.append("chosen"); }};
  QMenu widget;
};

TEST_F(PopupMenuTest, ShowsTitlesAsTheyAre) {
  const auto actions = fill({command("Fish & Chips_x\tAlt"), submenu("a & b", {})});
  EXPECT_EQ(actions[0]->text(), "Fish && Chips_x\tAlt");
  EXPECT_EQ(actions[1]->text(), "a && b");
}

TEST_F(PopupMenuTest, DrawsEachKindOfLine) {
  MenuItem off = command("off");
  off.enabled = false;
  MenuItem login = command("Launch at Login", MenuAction::toggleLogin);
  login.state = true;
  const auto actions =
      fill({command("on"), off, separator(), login,
            submenu("s", {choice("a", "a", true), choice("b", "b"), disabled("note")})});
  EXPECT_TRUE(actions[0]->isEnabled());
  EXPECT_FALSE(actions[0]->isCheckable());
  EXPECT_FALSE(actions[1]->isEnabled());
  EXPECT_TRUE(actions[2]->isSeparator());
  EXPECT_TRUE(actions[3]->isChecked());
  const auto children = actions[4]->menu()->actions();
  EXPECT_TRUE(children[0]->isChecked());
  EXPECT_TRUE(children[1]->isCheckable());
  EXPECT_FALSE(children[1]->isChecked());
  EXPECT_NE(children[1]->actionGroup(), nullptr) << "drawn as a radio line";
  EXPECT_FALSE(children[2]->isEnabled());
}

TEST_F(PopupMenuTest, CarriesOutTheItemThatWasDrawn) {
  source.setMenu(&sample.menu);
  const auto actions = fill({submenu("s", {choice("a", "id-a")})});
  sample.menu.items.clear();
  actions[0]->menu()->actions()[0]->trigger();
  EXPECT_TRUE(sample.performed.empty()) << "the menu closes first";
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  EXPECT_EQ(std::get<QString>(sample.performed[0].representedObject), "id-a");
  EXPECT_EQ(order, QStringList{"chosen"});
}

}  // namespace
}  // namespace tavin::tray
