#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QMenu>

#include "FakePanel.h"
#include "FakeXEmbedTray.h"
#include "SampleMenu.h"
#include "TestApplication.h"
#include "platform/tray/StatusNotifierTypes.h"
#include "platform/tray/Tray.h"

namespace tavin {
namespace {

using namespace tavin::test;

QMenu* openPopup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

// An icon in an old-style tray, before any panel is there.
class TrayTest : public ::testing::Test {
 protected:
  void SetUp() override {
    sample.items = {command("Open"), command("Quit", MenuAction::quit)};
    item->setImage("waveform", "Tavin");
    item->setMenu(&sample.menu);
    ASSERT_TRUE(waitFor([&] { return tray->docked() == 1; }));
  }

  std::unique_ptr<FakeXEmbedTray> tray = std::make_unique<FakeXEmbedTray>();
  SampleMenu sample;
  std::unique_ptr<StatusItem> item = createStatusItem({});
};

TEST_F(TrayTest, MovesToAPanelThatComesLaterAndBackAndAgainAfterARestart) {
  for (int start = 0; start < 3; ++start) {
    ASSERT_TRUE(waitFor([&] { return tray->docked() == 1; })) << "start " << start;
    FakePanel panel;
    ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); })) << "start " << start;
    runEvents();
    EXPECT_EQ(panel.registered.size(), 1);
    EXPECT_EQ(panel.itemProperty(panel.registered[0], "Id"), "tavin");
    EXPECT_TRUE(waitFor([&] { return tray->docked() == 0; })) << "never two icons";
  }
  EXPECT_TRUE(waitFor([&] { return tray->docked() == 1; })) << "back where it was";
}

TEST_F(TrayTest, DocksInATrayThatComesLater) {
  tray.reset();
  tray = std::make_unique<FakeXEmbedTray>();
  EXPECT_TRUE(waitFor([&] { return tray->docked() == 1; }));
}

TEST_F(TrayTest, DescribesItselfToThePanel) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  const auto property = [&](const char* name) {
    return panel.itemProperty(panel.registered[0], name);
  };
  EXPECT_EQ(property("Title"), "Tavin");
  EXPECT_EQ(property("Category"), "ApplicationStatus");
  EXPECT_EQ(property("Status"), "Active");
  EXPECT_EQ(property("ItemIsMenu"), true);
  EXPECT_EQ(property("IconName"), "app.tavin.Tavin-idle-symbolic");
  EXPECT_EQ(property("IconAccessibleDesc"), "Tavin");
  EXPECT_EQ(property("AttentionIconName"), "");
  EXPECT_EQ(property("Menu").value<QDBusObjectPath>().path(), "/MenuBar");
  const auto pixmaps = qdbus_cast<QList<tray::IconPixmap>>(property("IconPixmap"));
  ASSERT_FALSE(pixmaps.isEmpty());
  for (const tray::IconPixmap& pixmap : pixmaps) {
    EXPECT_EQ(pixmap.pixels.size(), pixmap.width * pixmap.height * 4);
    EXPECT_NE(pixmap.pixels, QByteArray(pixmap.pixels.size(), 0)) << "not empty";
  }
}

TEST_F(TrayTest, ShowsTheActiveIcon) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  panel.signalNames.clear();
  item->setImage("waveform.circle.fill", "Tavin");
  EXPECT_TRUE(waitFor([&] { return panel.signalNames.contains("NewIcon"); }));
  EXPECT_EQ(panel.itemProperty(panel.registered[0], "IconName"), "app.tavin.Tavin-active-symbolic");
  item->setImage("no such symbol", "Tavin");
  EXPECT_EQ(panel.itemProperty(panel.registered[0], "IconName"), "");
}

TEST_F(TrayTest, OpensItsOwnMenuWhereThePanelAsks) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  for (const char* method : {"Activate", "ContextMenu"}) {
    panel.callItem(panel.registered[0], method, {40, 50});
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; })) << method;
    EXPECT_EQ(openPopup()->pos(), QPoint(40, 50));
    openPopup()->close();
  }
  panel.callItem(panel.registered[0], "SecondaryActivate", {40, 50});
  panel.callItem(panel.registered[0], "Scroll", {120, "vertical"});
  runEvents();
  EXPECT_EQ(openPopup(), nullptr);
}

TEST_F(TrayTest, KeepsTheTokenThatComesWithAClick) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  panel.callItem(panel.registered[0], "ProvideXdgActivationToken", {"of the click"});
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "of the click");
  qunsetenv("XDG_ACTIVATION_TOKEN");
}

class PlasmaTrayTest : public TrayTest {
 protected:
  void SetUp() override {
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    item = createStatusItem({});
    TrayTest::SetUp();
  }
  void TearDown() override { qunsetenv("XDG_CURRENT_DESKTOP"); }
};

TEST_F(PlasmaTrayTest, LeavesTheMenuToThePanel) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  const auto answer = panel.callItem(panel.registered[0], "Activate", {40, 50});
  EXPECT_EQ(answer.type(), QDBusMessage::ErrorMessage) << "then Plasma shows it";
  runEvents();
  EXPECT_EQ(openPopup(), nullptr);
}

TEST_F(TrayTest, OpensOneMenuHoweverOftenAsked) {
  item->popUpMenu();
  ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
  const QMenu* first = openPopup();
  const int updates = sample.updates;
  item->popUpMenu();
  EXPECT_EQ(openPopup(), first);
  EXPECT_EQ(sample.updates, updates);
  openPopup()->close();
  EXPECT_EQ(openPopup(), nullptr) << "none below it";
}

TEST_F(TrayTest, GoesAwayWithItsMenuOpen) {
  item->popUpMenu();
  ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
  item.reset();
  EXPECT_EQ(openPopup(), nullptr);
}

}  // namespace
}  // namespace tavin
