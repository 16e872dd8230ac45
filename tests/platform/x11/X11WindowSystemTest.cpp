#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <thread>

#include "platform/x11/TestKeyboard.h"
#include "platform/x11/TestWindow.h"
#include "platform/x11/X11WindowSystem.h"

namespace tavin::x11 {
namespace {

using test::TestWindow;
using PrimaryProof = windows::WindowSystem::PrimaryProof;

constexpr auto kDock = "_NET_WM_WINDOW_TYPE_DOCK";

bool madeInBecomes(const PrimaryWatch& watch, xcb_window_t window) {
  const Deadline deadline = Deadline::in(10);
  while (watch.madeInWindow() != window && !deadline.passed()) std::this_thread::yield();
  return watch.madeInWindow() == window;
}

class X11WindowSystemTest : public testing::Test {
 protected:
  void activate(const TestWindow& window) { test::activate(*connection_, window.id()); }
  void activateNothing() { test::activate(*connection_, XCB_WINDOW_NONE); }
  windows::FrontWindow front(const TestWindow& window) {
    activate(window);
    return windows_.frontWindow();
  }
  void show(const TestWindow& inside, const TestWindow& host) {
    xcb_reparent_window(connection_->get(), inside.id(), host.id(), 0, 0);
    connection_->atom("a round trip");
  }
  void giveFocus(const TestWindow& window) {
    xcb_set_input_focus(connection_->get(), XCB_INPUT_FOCUS_PARENT, window.id(), XCB_CURRENT_TIME);
    connection_->atom("a round trip");
  }
  void movePointer(std::int16_t x, std::int16_t y) {
    xcb_warp_pointer(connection_->get(), XCB_NONE, connection_->root(), 0, 0, 0, 0, x, y);
    connection_->atom("a round trip");
  }
  std::optional<QString> primary(PrimaryProof proof) {
    return windows_.primaryText(windows_.frontWindow(), proof, Deadline::in(1));
  }
  // The watch hears of it a moment later.
  bool becomesPrimaryMadeInFront(const QString& text) {
    const Deadline deadline = Deadline::in(10);
    while (primary(PrimaryProof::takenInFront) != text) {
      if (deadline.passed())
        return false;
    }
    return true;
  }

  std::unique_ptr<Connection> connection_ = Connection::open();
  X11WindowSystem windows_{SelectionReader::create(), PrimaryWatch::create()};
};

TEST_F(X11WindowSystemTest, TellsTheActiveWindowAndItsProcess) {
  const TestWindow editor("editor");
  const TestWindow other("other");
  const auto found = front(editor);
  EXPECT_EQ(found.id, editor.id());
  EXPECT_EQ(found.processId, editor.processId());
  EXPECT_FALSE(found.terminal || found.browser || found.withoutCopyKey);
  EXPECT_TRUE(windows_.windowProcesses().contains(other.processId()));
}

TEST_F(X11WindowSystemTest, WithoutAnActiveWindowThereIsNone) {
  activateNothing();
  EXPECT_EQ(windows_.frontWindow().id, 0u);
}

TEST_F(X11WindowSystemTest, AWindowThatIsGoneIsNotActive) {
  { activate(TestWindow("editor")); }
  EXPECT_EQ(windows_.frontWindow().id, 0u);
}

TEST_F(X11WindowSystemTest, WithoutAWindowManagerTheFocusTells) {
  const TestWindow editor("editor");
  activate(editor);
  xcb_delete_property(connection_->get(), connection_->root(),
                      connection_->atom("_NET_ACTIVE_WINDOW"));
  connection_->atom("a round trip");
  EXPECT_EQ(windows_.frontWindow().id, editor.id());
}

TEST_F(X11WindowSystemTest, KnowsProgramsByTheirClass) {
  EXPECT_TRUE(front(TestWindow("XTerm")).terminal);
  EXPECT_TRUE(front(TestWindow("firefox")).browser);
  EXPECT_TRUE(front(TestWindow("org.pwmt.zathura")).withoutCopyKey);
}

TEST_F(X11WindowSystemTest, AProgramWithAPseudoTerminalIsATerminal) {
  TestWindow own("unheard-of");
  EXPECT_FALSE(front(own).terminal);
  ASSERT_TRUE(own.command("pty"));
  EXPECT_TRUE(front(own).terminal);
  TestWindow byChild("unheard-of");
  ASSERT_TRUE(byChild.command("child-pty"));
  EXPECT_TRUE(front(byChild).terminal);
}

TEST_F(X11WindowSystemTest, ATerminalInsideAnotherProgramsWindowIsATerminal) {
  const TestWindow tabs("tabs");
  TestWindow inside("unheard-of");
  ASSERT_TRUE(inside.command("pty"));
  ASSERT_TRUE(inside.command("primary inside"));
  EXPECT_FALSE(front(tabs).terminal);
  EXPECT_EQ(primary(PrimaryProof::sameProgram), std::nullopt);
  show(inside, tabs);
  activate(tabs);
  movePointer(600, 600);
  EXPECT_FALSE(windows_.frontWindow().terminal) << "neither the focus nor the pointer is in it";
  giveFocus(inside);
  const auto found = windows_.frontWindow();
  EXPECT_TRUE(found.terminal);
  EXPECT_EQ(found.id, tabs.id());
  EXPECT_EQ(found.processId, tabs.processId());
  EXPECT_EQ(primary(PrimaryProof::sameProgram), "inside");
  activate(tabs);
  movePointer(10, 10);
  EXPECT_TRUE(windows_.frontWindow().terminal) << "keys go where the pointer is inside the focus";
}

TEST_F(X11WindowSystemTest, PrimaryIsOnlyReadFromTheProgramInFront) {
  TestWindow editor("editor");
  TestWindow other("other");
  activate(editor);
  ASSERT_TRUE(editor.command("primary mine  "));
  EXPECT_EQ(primary(PrimaryProof::sameProgram), "mine  ");
  ASSERT_TRUE(other.command("primary theirs"));
  EXPECT_EQ(primary(PrimaryProof::sameProgram), std::nullopt);
  activate(other);
  EXPECT_EQ(primary(PrimaryProof::sameProgram), "theirs");
}

TEST_F(X11WindowSystemTest, PrimaryMadeInFrontIsForgottenWithTheFocus) {
  TestWindow viewer("viewer");
  const TestWindow other("other");
  const auto watch = PrimaryWatch::create();
  const auto becomes = [&](xcb_window_t window) { return madeInBecomes(*watch, window); };
  activate(viewer);
  ASSERT_TRUE(viewer.command("primary fresh"));
  EXPECT_TRUE(becomes(viewer.id()));
  activate(other);
  EXPECT_TRUE(becomes(XCB_WINDOW_NONE));
  activate(viewer);
  EXPECT_EQ(primary(PrimaryProof::sameProgram), "fresh");
  EXPECT_EQ(watch->madeInWindow(), xcb_window_t{XCB_WINDOW_NONE});
  ASSERT_TRUE(viewer.command("primary again"));
  EXPECT_TRUE(becomes(viewer.id()));
}

TEST_F(X11WindowSystemTest, PrimaryMadeInTheBackgroundIsNotMadeInFront) {
  TestWindow viewer("viewer");
  TestWindow other("other");
  const auto watch = PrimaryWatch::create();
  const auto becomes = [&](xcb_window_t window) { return madeInBecomes(*watch, window); };
  activate(other);
  ASSERT_TRUE(other.command("primary before"));
  ASSERT_TRUE(becomes(other.id())) << "so that the watch is seen to follow";
  ASSERT_TRUE(viewer.command("primary behind"));
  EXPECT_TRUE(becomes(XCB_WINDOW_NONE));
  activate(viewer);
  EXPECT_EQ(primary(PrimaryProof::takenInFront), std::nullopt);
  EXPECT_EQ(primary(PrimaryProof::sameProgram), "behind");
}

TEST_F(X11WindowSystemTest, APanelsMenuDoesNotMakePrimaryOld) {
  TestWindow viewer("viewer");
  const TestWindow panel("panel", kDock);
  activate(viewer);
  ASSERT_TRUE(viewer.command("primary kept"));
  ASSERT_TRUE(becomesPrimaryMadeInFront("kept"));
  activate(panel);
  activateNothing();
  activate(viewer);
  EXPECT_TRUE(becomesPrimaryMadeInFront("kept"));
}

TEST_F(X11WindowSystemTest, AfterAMenuCommandItWaitsUntilAnotherWindowIsActive) {
  const TestWindow editor("editor");
  const TestWindow panel("panel", kDock);
  activate(panel);
  EXPECT_EQ(windows_.frontWindow().id, panel.id()) << "without a command it does not wait";
  windows_.menuCommandChosen();
  std::thread later([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    activate(editor);
  });
  EXPECT_EQ(windows_.frontWindow().id, editor.id());
  later.join();
}

TEST_F(X11WindowSystemTest, AfterAMenuCommandItWaitsUntilTheKeyboardIsFree) {
  TestWindow editor("editor");
  TestWindow menu("menu");
  activate(editor);
  ASSERT_TRUE(menu.command("grab"));
  windows_.menuCommandChosen();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(windows_.frontWindow().id, editor.id());
  EXPECT_GE(timer.elapsed(), 450) << "the keyboard was not let go of";
  EXPECT_LT(timer.elapsed(), 2000);
  ASSERT_TRUE(menu.command("ungrab"));
  windows_.menuCommandChosen();
  timer.restart();
  EXPECT_EQ(windows_.frontWindow().id, editor.id());
  EXPECT_LT(timer.elapsed(), 400);
}

}  // namespace
}  // namespace tavin::x11
