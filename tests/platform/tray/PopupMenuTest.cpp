#include <gtest/gtest.h>

#include <QApplication>

#include "SampleMenu.h"
#include "TestApplication.h"
#include "platform/tray/PopupMenu.h"
#include "platform/widgets/Contrast.h"
#include "platform/widgets/MenuWidget.h"

namespace tavin::tray {
namespace {

using namespace tavin::test;
using widgets::contrast;
using widgets::fillMenu;

class PopupMenuTest : public ::testing::Test {
 protected:
  QList<QAction*> fill(std::vector<MenuItem> items) {
    sample.menu.items = std::move(items);
    const auto lines = linesOf(sample.menu, commands);
    fillMenu(widget, lines, [this](quint32 number) { chosen.push_back(number); });
    return widget.actions();
  }

  SampleMenu sample;
  std::vector<MenuItem> commands;
  std::vector<quint32> chosen;
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

TEST_F(PopupMenuTest, TellsTheNumberOfTheCommandThatWasDrawn) {
  const auto actions =
      fill({command("first"), separator(), submenu("s", {choice("a", "id-a"), choice("b", "id-b")}),
            command("last", MenuAction::quit)});
  actions[2]->menu()->actions()[1]->trigger();
  actions[3]->trigger();
  ASSERT_EQ(chosen.size(), 2U);
  EXPECT_EQ(std::get<QString>(commands.at(chosen[0]).representedObject), "id-b");
  EXPECT_EQ(commands.at(chosen[1]).action, MenuAction::quit);
}

// The clearest point of a line's text.
double contrastOf(const QImage& picture, const QRect& line) {
  const QColor ground = picture.pixelColor(line.topRight() - QPoint(2, -2));
  double clearest = 1;
  for (int y = line.top(); y <= line.bottom(); ++y)
    for (int x = line.left() + 2; x < line.right() - 2; ++x)
      clearest = std::max(clearest, contrast(picture.pixelColor(x, y), ground));
  return clearest;
}

class PopupMenuLookTest : public PopupMenuTest {
 protected:
  void SetUp() override { own_ = QApplication::palette(); }
  void TearDown() override { QApplication::setPalette(own_); }

  double contrastOfDisabled(const QPalette& theme) {
    return contrastOfLine(theme, disabled("MMMMMM off"));
  }

  double contrastOfLine(const QPalette& theme, const MenuItem& line) {
    QApplication::setPalette(theme);
    SampleMenu lines;
    lines.menu.items = {command("on"), line, separator()};
    QMenu menu;
    fillMenu(menu, linesOf(lines.menu, commands), {});
    menu.ensurePolished();
    menu.resize(menu.sizeHint());
    const QImage picture = menu.grab().toImage();
    return contrastOf(picture, menu.actionGeometry(menu.actions()[1]));
  }

  static QPalette theme(const QColor& ground, const QColor& text, const QColor& off) {
    QPalette palette(ground);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
      palette.setColor(role, text);
      palette.setColor(QPalette::Disabled, role, off);
    }
    return palette;
  }

 private:
  QPalette own_;
};

TEST_F(PopupMenuLookTest, DrawsDisabledLinesClearlyEnough) {
  EXPECT_GE(contrastOfDisabled(QApplication::palette()), 3) << "without a theme";
  EXPECT_GE(contrastOfDisabled(theme("#efefef", "#000000", "#bebebe")), 3) << "light";
  EXPECT_GE(contrastOfDisabled(theme("#353535", "#ffffff", "#4a4a4a")), 3) << "dark";
}

TEST_F(PopupMenuLookTest, LeavesTheThemesColourWhereThatIsClearEnough) {
  const QPalette palette = theme("#efefef", "#000000", "#606060");
  EXPECT_NEAR(contrastOfDisabled(palette), contrast("#606060", palette.base().color()), 0.1);
}

TEST_F(PopupMenuLookTest, ShowsAnEmptyBoxOnADarkGround) {
  const MenuItem box = command("", MenuAction::toggleLogin);
  EXPECT_GE(contrastOfLine(theme("#353535", "#ffffff", "#4a4a4a"), box), 3);
  EXPECT_GE(contrastOfLine(theme("#000000", "#ffffff", "#4a4a4a"), box), 3) << "high contrast";
}

TEST_F(PopupMenuLookTest, TellsDisabledLinesFromOthers) {
  const QPalette palette = theme("#efefef", "#000000", "#bebebe");
  EXPECT_LT(contrastOfDisabled(palette), 5) << "black has 21";
}

}  // namespace
}  // namespace tavin::tray
