#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QMenu>
#include <QThread>

#include "FakePanel.h"
#include "FakeXEmbedTray.h"
#include "InProcessLauncher.h"
#include "SampleMenu.h"
#include "TestApplication.h"
#include "platform/ActivationToken.h"
#include "platform/Deadline.h"
#include "platform/tray/StatusNotifierTypes.h"
#include "platform/tray/Tray.h"
#include "platform/x11/DisplayWatch.h"

namespace tavin {
namespace {

using namespace tavin::test;

std::unique_ptr<StatusItem> createItem() {
  return createStatusItem({}, inProcessProgram(), x11::DisplayWatch::create([] {}));
}

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
  std::unique_ptr<StatusItem> item = createItem();
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

// A panel that lives on in a thread of its own while ours runs no events.
class PanelInThread {
 public:
  PanelInThread() {
    panel_.moveToThread(&thread_);
    thread_.start();
  }
  ~PanelInThread() {
    inThread([&] { panel_.moveToThread(QCoreApplication::instance()->thread()); });
    thread_.quit();
    thread_.wait();
  }
  qsizetype registered() {
    qsizetype count = 0;
    inThread([&] { count = panel_.registered.size(); });
    return count;
  }

 private:
  void inThread(const std::function<void()>& task) {
    QMetaObject::invokeMethod(&panel_, task, Qt::BlockingQueuedConnection);
  }

  FakePanel panel_;
  QThread thread_;
};

TEST(TrayAtLaunchTest, IsAnnouncedToThePanelThatIsThereBeforeAnyEventIsHandled) {
  PanelInThread panel;
  const auto item = createItem();
  EXPECT_EQ(panel.registered(), 0) << "it has no looks yet";
  item->setImage("waveform", "Tavin");
  const Deadline deadline = Deadline::in(5);
  while (panel.registered() == 0 && !deadline.passed()) QThread::msleep(1);
  EXPECT_EQ(panel.registered(), 1);
  runEvents();
  EXPECT_EQ(panel.registered(), 1) << "once";
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

// A panel in a process of this name.
class NamedPanelTest : public TrayTest {
 protected:
  static void name(const char* process) { ::prctl(PR_SET_NAME, process); }
  void SetUp() override {
    ::prctl(PR_GET_NAME, own_);
    TrayTest::SetUp();
  }
  void TearDown() override { name(own_); }
  QVariant iconName() {
    FakePanel panel;
    EXPECT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
    return panel.itemProperty(panel.registered.value(0), "IconName");
  }

 private:
  char own_[16] = {};
};

TEST_F(NamedPanelTest, GivesTheNamedIconToPanelsThatRecolourItAndPixelsToAllOthers) {
  for (const char* process :
       {"gnome-shell", "kded5", "kded6", "panel-3-systray", "panel-12-systra"}) {
    name(process);
    EXPECT_EQ(iconName(), "app.tavin.Tavin-idle-symbolic") << process;
  }
  for (const char* process : {"lxqt-panel", "waybar", "xfce4-panel", "panel", "no-systray", ""}) {
    name(process);
    EXPECT_EQ(iconName(), "") << process;
  }
}

TEST_F(NamedPanelTest, ShowsTheActiveIcon) {
  name("gnome-shell");
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  panel.signalNames.clear();
  item->setImage("waveform.circle.fill", "Tavin");
  EXPECT_TRUE(waitFor([&] { return panel.signalNames.contains("NewIcon"); }));
  EXPECT_EQ(panel.itemProperty(panel.registered[0], "IconName"), "app.tavin.Tavin-active-symbolic");
  item->setImage("no such symbol", "Tavin");
  EXPECT_EQ(panel.itemProperty(panel.registered[0], "IconName"), "");
}

TEST_F(TrayTest, SaysItsStateInTheToolTip) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  const auto toolTip = [&] {
    return qdbus_cast<tray::ToolTip>(panel.itemProperty(panel.registered[0], "ToolTip"));
  };
  EXPECT_EQ(toolTip().title, "Tavin");
  EXPECT_EQ(toolTip().text, "Not reading");
  panel.signalNames.clear();
  item->setImage("waveform.circle.fill", "Tavin");
  EXPECT_TRUE(waitFor([&] { return panel.signalNames.contains("NewToolTip"); }));
  EXPECT_EQ(toolTip().title, "Tavin");
  EXPECT_EQ(toolTip().text, "Reading or paused");
}

// One signal for each change of the look, and nothing by itself.
TEST_F(TrayTest, DoesNotAnimate) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  EXPECT_EQ(panel.itemProperty(panel.registered[0], "AttentionMovieName"), "");
  panel.signalNames.clear();
  item->setImage("waveform.circle.fill", "Tavin");
  ASSERT_TRUE(waitFor([&] { return panel.signalNames.contains("NewIcon"); }));
  const QVariant shown = panel.itemProperty(panel.registered[0], "IconPixmap");
  for (int moment = 0; moment < 100; ++moment) runEvents();  // A second.
  EXPECT_EQ(panel.signalNames.count("NewIcon"), 1);
  EXPECT_EQ(
      qdbus_cast<QList<tray::IconPixmap>>(shown).first().pixels,
      qdbus_cast<QList<tray::IconPixmap>>(panel.itemProperty(panel.registered[0], "IconPixmap"))
          .first()
          .pixels);
}

TEST_F(TrayTest, OpensItsOwnMenuWhereThePanelAsks) {
  FakePanel panel;
  ASSERT_TRUE(waitFor([&] { return !panel.registered.isEmpty(); }));
  for (const char* method : {"Activate", "ContextMenu"}) {
    // Until the end of the one before it is known.
    ASSERT_TRUE(waitFor([&] {
      panel.callItem(panel.registered[0], method, {40, 50});
      return openPopup() != nullptr;
    })) << method;
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
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "other threads read it";
  EXPECT_EQ(takeActivationToken(), "of the click");
}

class PlasmaTrayTest : public TrayTest {
 protected:
  void SetUp() override {
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    item = createItem();
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
  runEvents();
  EXPECT_EQ(openPopup(), first);
  EXPECT_EQ(sample.updates, updates);
  openPopup()->close();
  EXPECT_EQ(openPopup(), nullptr) << "none below it";
}

TEST_F(TrayTest, GoesAwayWithItsMenuOpen) {
  item->popUpMenu();
  ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
  item.reset();
  EXPECT_TRUE(waitFor([] { return openPopup() == nullptr; }));
}

TEST_F(TrayTest, CarriesOutWhatWasChosenInItsOwnMenu) {
  item->popUpMenu();
  ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
  sample.menu.items.clear();  // Rebuilt for something else meanwhile.
  openPopup()->actions()[1]->trigger();
  EXPECT_TRUE(sample.performed.empty()) << "the menu closes first";
  ASSERT_TRUE(waitFor([&] { return !sample.performed.empty(); }));
  EXPECT_EQ(sample.performed[0].action, MenuAction::quit);
}

}  // namespace
}  // namespace tavin
