#include <gtest/gtest.h>

#include "platform/copy/CopyKeyboard.h"
#include "platform/copy/TypeCopy.h"
#include "platform/x11/KeyboardSnapshot.h"
#include "platform/x11/TestKeyboard.h"
#include "platform/x11/TestWindow.h"
#include "platform/x11/X11CopyKey.h"

namespace tavin::x11 {
namespace {

namespace key = test::key;
using test::kCopyKey;

constexpr xcb_keycode_t kInsertKey = 118;
constexpr std::uint32_t kInsertSymbol = 0xff63;

class X11CopyKeyTest : public testing::Test {
 protected:
  X11CopyKeyTest() { test::activate(user_.connection(), window_.id()); }

  bool typeCopy(std::uint64_t flags = EventFlags::command) {
    return test::typeCopy(keyboard_, flags);
  }
  // The keys that reached the window since the last call, told by one more key.
  QStringList keysSoFar() {
    user_.type({key::t});
    QStringList keys;
    while (keys.isEmpty() || !keys.last().startsWith(QString("release %1 ").arg(key::t))) {
      const QStringList next = window_.keys(1);
      if (next.isEmpty())
        return {"(nothing comes)"};
      keys += next;
    }
    return keys.mid(0, keys.size() - 2);
  }

  bool allowed_ = true;
  test::TestKeyboard user_;
  test::TestWindow window_{"editor"};
  copy::CopyKeyboard keyboard_{X11CopyKey::create(), [this] { return allowed_; }};
};

TEST_F(X11CopyKeyTest, TellsTheModifiersThatAreHeld) {
  const std::pair<xcb_keycode_t, std::uint64_t> modifiers[] = {
      {key::leftShift, EventFlags::shift},
      {key::leftControl, EventFlags::control},
      {key::leftAlt, EventFlags::option},
      {key::leftSuper, EventFlags::command},
  };
  EXPECT_EQ(keyboard_.flagsState(), 0u);
  for (const auto& [code, flag] : modifiers) {
    user_.press(code);
    EXPECT_EQ(keyboard_.flagsState(), flag);
    user_.release(code);
  }
  user_.press(key::leftAlt);
  user_.press(key::leftShift);
  EXPECT_EQ(keyboard_.flagsState(), EventFlags::option | EventFlags::shift);
}

TEST_F(X11CopyKeyTest, LocksAndOtherKeysAreNoModifiers) {
  for (const auto lock : {key::capsLock, key::numLock}) {
    user_.type({lock});
    EXPECT_EQ(keyboard_.flagsState(), 0u);
    user_.press(lock);
    EXPECT_EQ(keyboard_.flagsState(), 0u);
    user_.release(lock);  // Pressed twice it is off again.
  }
  user_.press(key::r);
  EXPECT_EQ(keyboard_.flagsState(), 0u);
}

TEST_F(X11CopyKeyTest, TheCopyCommandArrivesAsControlInsert) {
  EXPECT_TRUE(typeCopy());
  EXPECT_EQ(keysSoFar(),
            (QStringList{"press 37 0", "press 118 4", "release 118 4", "release 37 4"}));
}

// The program may end between the two.
TEST_F(X11CopyKeyTest, NoKeyIsHeldAfterTheEventOfTheKeyGoingDown) {
  const auto event = keyboard_.createKeyboardEvent(kCopyKey, true);
  ASSERT_NE(event, nullptr);
  event->setFlags(EventFlags::command);
  event->post();
  const QStringList chord{"press 37 0", "press 118 4", "release 118 4", "release 37 4"};
  EXPECT_EQ(keysSoFar(), chord);
  EXPECT_EQ(keyboard_.flagsState(), 0u);
  const auto up = keyboard_.createKeyboardEvent(kCopyKey, false);
  ASSERT_NE(up, nullptr);
  up->post();
  EXPECT_EQ(keysSoFar(), QStringList());
}

TEST_F(X11CopyKeyTest, TheKeyGoingUpAloneTypesNothing) {
  ASSERT_NE(keyboard_.createKeyboardEvent(kCopyKey, true), nullptr);
  const auto up = keyboard_.createKeyboardEvent(kCopyKey, false);
  ASSERT_NE(up, nullptr);
  up->post();
  EXPECT_EQ(keysSoFar(), QStringList());
}

TEST_F(X11CopyKeyTest, HeldModifiersAreLetGoOfFirstAndNotPressedAgain) {
  user_.press(key::leftAlt);
  user_.press(key::leftShift);
  keysSoFar();
  EXPECT_TRUE(typeCopy());
  EXPECT_EQ(keysSoFar(), (QStringList{"release 50 9", "release 64 8", "press 37 0", "press 118 4",
                                      "release 118 4", "release 37 4"}));
  EXPECT_EQ(keyboard_.flagsState(), 0u);
}

TEST_F(X11CopyKeyTest, NothingIsTypedWhereTheProgramMustNotGetIt) {
  allowed_ = false;
  EXPECT_FALSE(typeCopy());
  EXPECT_EQ(keysSoFar(), QStringList());
}

TEST_F(X11CopyKeyTest, OtherKeysAndOtherModifiersTypeNothing) {
  EXPECT_EQ(keyboard_.createKeyboardEvent(9, true), nullptr);
  EXPECT_EQ(keyboard_.createKeyboardEvent(kCopyKey, false), nullptr) << "an up without a down";
  typeCopy(0);
  typeCopy(EventFlags::command | EventFlags::shift);
  EXPECT_EQ(keysSoFar(), QStringList());
}

TEST_F(X11CopyKeyTest, NothingIsTypedIntoAMenuOrALock) {
  ASSERT_TRUE(window_.command("grab"));
  EXPECT_FALSE(typeCopy());
  ASSERT_TRUE(window_.command("ungrab"));
  EXPECT_TRUE(typeCopy());
}

TEST_F(X11CopyKeyTest, WithoutAnInsertKeyThereIsNoCopy) {
  xcb_connection_t* c = user_.connection().get();
  const xcb_keysym_t none = XCB_NO_SYMBOL;
  const xcb_keysym_t insert = kInsertSymbol;
  xcb_change_keyboard_mapping(c, 1, kInsertKey, 1, &none);
  user_.sync();
  EXPECT_FALSE(typeCopy());
  xcb_change_keyboard_mapping(c, 1, kInsertKey, 1, &insert);
  user_.sync();
  EXPECT_TRUE(typeCopy());
}

TEST_F(X11CopyKeyTest, TheInsertKeyIsFoundWhereverTheLayoutHasIt) {
  constexpr xcb_keycode_t other = 96;
  xcb_connection_t* c = user_.connection().get();
  const xcb_keysym_t none = XCB_NO_SYMBOL;
  const xcb_keysym_t insert = kInsertSymbol;
  const auto before = KeyboardSnapshot(user_.connection()).keyFor(kInsertSymbol);
  xcb_change_keyboard_mapping(c, 1, kInsertKey, 1, &none);
  xcb_change_keyboard_mapping(c, 1, other, 1, &insert);
  user_.sync();
  EXPECT_TRUE(typeCopy());
  EXPECT_TRUE(keysSoFar().contains("press 96 4"));
  xcb_change_keyboard_mapping(c, 1, kInsertKey, 1, &insert);
  xcb_change_keyboard_mapping(c, 1, other, 1, &none);
  user_.sync();
  EXPECT_EQ(KeyboardSnapshot(user_.connection()).keyFor(kInsertSymbol), before);
}

}  // namespace
}  // namespace tavin::x11
