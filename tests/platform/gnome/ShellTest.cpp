// What is asked of GNOME Shell, and what counts meanwhile.
#include <gtest/gtest.h>

#include <memory>

#include "FakeShell.h"
#include "fake/FakeServices.h"
#include "platform/Eventually.h"
#include "platform/Keyboard.h"
#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/ShellWatch.h"
#include "platform/session/NotingControl.h"

namespace tavin::test {
namespace {

class ShellTest : public ::testing::Test {
 protected:
  // The shell serves in this very thread, so it does not answer meanwhile.
  bool heldForAllThatIsKnown() { return modifiers->flags() == EventFlags::option; }

  FakeShell shell;
  std::shared_ptr<gnome::HeldModifiers> modifiers =
      std::make_shared<gnome::HeldModifiers>(QDBusConnection::sessionBus());
};

TEST_F(ShellTest, APressCountsBeforeTheShellHasAnswered) {
  shell.start();
  EXPECT_FALSE(heldForAllThatIsKnown());
  gnome::HeldModifiers::noteIn(modifiers);
  EXPECT_TRUE(heldForAllThatIsKnown());
}

TEST_F(ShellTest, AnActionWithoutAKeyHoldsNothing) {
  shell.start();
  gnome::HeldModifiers::noteIn(modifiers);
  ASSERT_TRUE(eventually([&] { return shell.questions() == 1; }));
  shell.tellIdleTime(5000);
  EXPECT_TRUE(eventually([&] { return !heldForAllThatIsKnown(); }, 2000));
}

TEST_F(ShellTest, AnActionThatLooksForASelectionCountsAsAPress) {
  shell.start();
  auto fake = std::make_unique<FakeRemoteControl>();
  const RemoteActions& served = fake->actions;
  session::NotingControl control(std::move(fake),
                                 [this] { gnome::HeldModifiers::noteIn(modifiers); });
  bool heldWhileItRan = false;
  control.serve({.activate = {},
                 .speakOrStop = [&] { heldWhileItRan = heldForAllThatIsKnown(); },
                 .togglePause = [] {},
                 .stop = {}});
  served.togglePause();
  EXPECT_FALSE(heldForAllThatIsKnown());
  served.speakOrStop();
  EXPECT_TRUE(heldWhileItRan);
}

TEST_F(ShellTest, AShellThatComesLaterIsAskedForItsVersionOnce) {
  QStringList versions;
  const gnome::ShellWatch watch(QDBusConnection::sessionBus(),
                                [&](const QString& version) { versions << version; });
  shell.start();
  ASSERT_TRUE(eventually([&] { return shell.questions() > 0; }));
  shell.tellVersion("43.9");
  ASSERT_TRUE(eventually([&] { return versions == QStringList{"43.9"}; }));
  shell.stop();
  shell.start();
  EXPECT_FALSE(eventually([&] { return shell.questions() > 0; }, 200));
}

}  // namespace
}  // namespace tavin::test
