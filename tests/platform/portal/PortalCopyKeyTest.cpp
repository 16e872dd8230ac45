#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <thread>

#include "FakeRemoteDesktop.h"
#include "platform/Eventually.h"
#include "platform/copy/CopyKeyboard.h"
#include "platform/portal/PortalCopyKey.h"

namespace tavin::test {
namespace {

using ::testing::IsEmpty;

constexpr std::uint16_t keyC = 8;
const QStringList chord{"29 down", "110 down", "110 up", "29 up"};

class Log final : public SystemLog {
 public:
  void write(const QString& line) override { lines << line; }
  QStringList lines;
};

// What the keyboard has on the key for Control, and on the one for scrolling.
std::string keymapWith(const std::string& symbol) {
  return "xkb_keymap { xkb_keycodes { minimum = 8; maximum = 255; <LCTL> = 37; <SCLK> = 78; };"
         "xkb_types { type \"ONE_LEVEL\" { modifiers = none; }; }; xkb_compat { };"
         "xkb_symbols { key <LCTL> { [ Control_L ] }; key <SCLK> { [ " +
         symbol + " ] }; }; };";
}

class PortalCopyKeyTest : public ::testing::Test {
 protected:
  void start(portal::ModifierHabits habits = {}) {
    keyboard = std::make_unique<copy::CopyKeyboard>(
        std::make_unique<portal::PortalCopyKey>(
            std::make_shared<portal::RemoteDesktop>(log, portal::RestoreToken(tokenPath())),
            std::move(habits), [this] { return keymap; }),
        [this] { return mayCopy; });
  }
  QString tokenPath() const { return folder.filePath("tavin/token"); }

  // What a press does, on a thread of its own like the work queue. Whether keys could be made.
  bool press() {
    bool made = false;
    std::atomic<bool> done = false;
    std::thread queue([&] {
      for (const bool down : {true, false}) {
        if (const auto event = keyboard->createKeyboardEvent(keyC, down)) {
          made = true;
          event->setFlags(EventFlags::command);
          event->post();
        }
      }
      done = true;
    });
    EXPECT_TRUE(eventually([&] { return done.load(); }));
    queue.join();
    return made;
  }
  // The press that asks, and the answer.
  void pressAndWait(const QString& answer) {
    const auto before = log.lines.size();
    EXPECT_FALSE(press());
    EXPECT_TRUE(
        eventually([&] { return log.lines.size() > before && log.lines.last().contains(answer); }));
  }
  void open() { pressAndWait("lets Tavin press"); }
  bool nothingIsAsked() {
    // The end of an earlier session may still be on its way.
    const auto sessions = [&] { return portal->calls.count("CreateSession"); };
    const auto before = sessions();
    return !eventually([&] { return sessions() != before; }, 200);
  }
  qsizetype dialogs() const { return portal->calls.count("Start"); }

  int argumentCount = 0;
  QCoreApplication application{argumentCount, nullptr};
  QTemporaryDir folder;
  Log log;
  std::unique_ptr<FakeRemoteDesktop> portal = std::make_unique<FakeRemoteDesktop>();
  std::unique_ptr<copy::CopyKeyboard> keyboard;
  bool mayCopy = true;
  std::string keymap;  // Empty: it is not known.
};

TEST_F(PortalCopyKeyTest, AsksAtTheFirstNeedAndTypesFromTheSecondOn) {
  start();
  EXPECT_THAT(portal->calls, IsEmpty());
  open();
  EXPECT_THAT(portal->keys, IsEmpty());
  EXPECT_TRUE(press());
  EXPECT_EQ(portal->keys, chord);
  EXPECT_TRUE(press());
  EXPECT_EQ(portal->keys, chord + chord);
  EXPECT_EQ(dialogs(), 1);
}

TEST_F(PortalCopyKeyTest, PressesTheKeysThatTheLayoutHasNow) {
  start();
  open();
  keymap = keymapWith("Insert");
  EXPECT_TRUE(press());
  const QStringList moved{"29 down", "70 down", "70 up", "29 up"};
  EXPECT_EQ(portal->keys, moved);
  keymap = keymapWith("Delete");
  EXPECT_FALSE(press()) << "no key copies";
  EXPECT_EQ(portal->keys, moved);
}

TEST_F(PortalCopyKeyTest, OfAPortalThatHangsNoKeyStaysDown) {
  start();
  open();
  portal->keysHang = true;
  EXPECT_TRUE(press());
  EXPECT_TRUE(eventually([&] { return log.lines.last().contains("presses no key"); }));
  EXPECT_TRUE(eventually([&] { return portal->session.isEmpty(); }));
  portal->takeKeys();
  EXPECT_THAT(portal->keys, IsEmpty());
  portal->keysHang = false;
  open();
  EXPECT_TRUE(press());
  EXPECT_EQ(portal->keys, chord);
}

TEST_F(PortalCopyKeyTest, AsksOnceHoweverOftenIsPressedMeanwhile) {
  portal->dialogStaysOpen = true;
  start();
  EXPECT_FALSE(press());
  ASSERT_TRUE(eventually([&] { return dialogs() == 1; }));
  EXPECT_FALSE(press());
  EXPECT_FALSE(press());
  portal->answerDialog();
  ASSERT_TRUE(eventually([&] { return press(); }));
  EXPECT_EQ(dialogs(), 1);
  EXPECT_EQ(portal->keys, chord);
}

TEST_F(PortalCopyKeyTest, NobodyIsAskedForAProgramThatGetsNoKeys) {
  start();
  mayCopy = false;
  EXPECT_FALSE(press());
  EXPECT_TRUE(nothingIsAsked());
  EXPECT_THAT(portal->calls, IsEmpty());
}

TEST_F(PortalCopyKeyTest, WhatWasDeclinedIsNotAskedForAgain) {
  portal->answerCode = 1;
  start();
  pressAndWait("declined");
  portal->answerCode = 0;
  EXPECT_FALSE(press());
  EXPECT_TRUE(nothingIsAsked());
  portal->leave();
  portal->comeBack();
  EXPECT_FALSE(press());
  EXPECT_TRUE(nothingIsAsked());
  EXPECT_EQ(dialogs(), 1);
  EXPECT_TRUE(portal->session.isEmpty());
}

TEST_F(PortalCopyKeyTest, AQuestionThatTheDesktopBreaksOffIsAskedAgainByTheNextPress) {
  portal->answerCode = portal::endedOtherwise;
  start();
  pressAndWait("not asked to the end");
  portal->answerCode = 0;
  open();
  EXPECT_TRUE(press());
}

TEST_F(PortalCopyKeyTest, ADesktopThatAlwaysBreaksOffIsNotAskedForEver) {
  portal->answerCode = portal::endedOtherwise;
  start();
  pressAndWait("not asked to the end");
  pressAndWait("not asked to the end");
  pressAndWait("declined");
  EXPECT_FALSE(press());
  EXPECT_TRUE(nothingIsAsked());
  EXPECT_EQ(dialogs(), 3);
}

TEST_F(PortalCopyKeyTest, ADesktopThatAlwaysClosesItsQuestionIsNotAskedForEver) {
  portal->dialogStaysOpen = true;
  start();
  for (const char* answer : {"ended", "ended", "declined"}) {
    const auto before = dialogs();
    EXPECT_FALSE(press());
    ASSERT_TRUE(eventually([&] { return dialogs() == before + 1; }));
    portal->closeSession();
    ASSERT_TRUE(eventually([&] { return log.lines.last().contains(answer); }));
  }
  EXPECT_FALSE(press());
  EXPECT_TRUE(nothingIsAsked());
  EXPECT_EQ(dialogs(), 3);
}

TEST_F(PortalCopyKeyTest, AGrantWithoutTheKeyboardIsNone) {
  portal->answerDevices = 0;
  start();
  pressAndWait("declined");
  EXPECT_FALSE(press());
  EXPECT_THAT(portal->keys, IsEmpty());
}

TEST_F(PortalCopyKeyTest, AnInterfaceWithoutAKeyboardOpensNothing) {
  portal->deviceTypes = 0;
  start();
  pressAndWait("no keyboard");
  EXPECT_THAT(portal->calls, IsEmpty());
  portal->deviceTypes = 1;  // Its desktop's part has come.
  open();
  EXPECT_TRUE(press());
}

TEST_F(PortalCopyKeyTest, ASessionThatTheUserEndedIsOpenedByTheNextPress) {
  start();
  open();
  portal->closeSession();
  ASSERT_TRUE(eventually([&] { return log.lines.last().contains("ended"); }));
  open();
  EXPECT_TRUE(press());
  EXPECT_EQ(dialogs(), 2);
}

TEST_F(PortalCopyKeyTest, APortalThatRestartsIsAskedByTheNextPress) {
  start();
  open();
  portal->leave();
  ASSERT_TRUE(eventually([&] { return log.lines.last().contains("ended"); }));
  portal->comeBack();
  open();
  EXPECT_TRUE(press());
}

TEST_F(PortalCopyKeyTest, APortalThatEndsWhileItAsksKeepsNobodyWaiting) {
  portal->dialogStaysOpen = true;
  start();
  EXPECT_FALSE(press());
  ASSERT_TRUE(eventually([&] { return dialogs() == 1; }));
  portal->leave();
  ASSERT_TRUE(eventually([&] { return log.lines.last().contains("ended"); }));
  portal->dialogStaysOpen = false;
  portal->comeBack();
  open();
  EXPECT_TRUE(press());
}

TEST_F(PortalCopyKeyTest, ANewerPortalRemembersTheUsersAnswer) {
  portal->version = 2;
  portal->answerToken = "first";
  start();
  open();
  EXPECT_EQ(portal->selection["persist_mode"].toUInt(), 2U);
  EXPECT_FALSE(portal->selection.contains("restore_token"));
  EXPECT_EQ(QFile::permissions(tokenPath()) & (QFile::ReadGroup | QFile::ReadOther),
            QFile::Permissions());
  portal->answerToken = "second";
  start();
  EXPECT_FALSE(press());
  ASSERT_TRUE(eventually([&] { return portal->selection["restore_token"] == "first"; }));
  ASSERT_TRUE(eventually([&] { return portal::RestoreToken(tokenPath()).read() == "second"; }));
}

TEST_F(PortalCopyKeyTest, AnOlderPortalIsNotAskedToRemember) {
  start();
  open();
  EXPECT_FALSE(portal->selection.contains("persist_mode"));
  EXPECT_FALSE(QFileInfo::exists(tokenPath()));
}

TEST_F(PortalCopyKeyTest, WhileTheUserHoldsAModifierNoChordIsMade) {
  std::uint64_t held = EventFlags::option;
  start({.held = [&held] { return held; }, .released = false});
  open();
  EXPECT_EQ(keyboard->flagsState(), EventFlags::option);
  EXPECT_FALSE(press());
  held = 0;
  EXPECT_TRUE(press());
  EXPECT_EQ(portal->keys, chord);
}

TEST_F(PortalCopyKeyTest, WhereThatCanBeDoneHeldModifiersAreReleasedFirst) {
  start({.held = {}, .released = true});
  open();
  EXPECT_TRUE(press());
  // Shift, Control and Meta; then Alt, which would open a menu bar if it came up alone.
  const QStringList others{"42 up", "54 up", "29 up", "97 up", "125 up", "126 up"};
  const QStringList alt{"56 up", "100 up"};
  EXPECT_EQ(portal->keys, others + chord.mid(0, 1) + alt + chord.mid(1));
}

TEST_F(PortalCopyKeyTest, WithoutAPortalNothingIsMade) {
  portal.reset();
  start();
  pressAndWait("no keyboard");
  EXPECT_FALSE(press());
}

}  // namespace
}  // namespace tavin::test
