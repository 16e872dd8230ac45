#include <gtest/gtest.h>

#include "platform/gnome/HeldModifiers.h"

namespace tavin::test {
namespace {

using std::chrono::milliseconds;

// Times are milliseconds from a start; an input's is known to a millisecond or two.
class ShortcutHoldTest : public ::testing::Test {
 protected:
  gnome::InputTime at(int input) const {
    return {start + milliseconds(input - 1), start + milliseconds(input + 1)};
  }
  void press(int now, int input) {
    hold.pressed(start + milliseconds(now));
    refine(now, input);
  }
  void refine(int press, int input) { hold.refine(start + milliseconds(press), at(input)); }
  bool held(int now, int input) { return hold.isHeld(start + milliseconds(now), at(input)); }

  const gnome::Clock::time_point start = gnome::Clock::now();
  gnome::ShortcutHold hold;
};

TEST_F(ShortcutHoldTest, NothingIsHeldBeforeAnyPress) { EXPECT_FALSE(held(100, 0)); }

TEST_F(ShortcutHoldTest, WithoutAnInputSinceThePressAllOfItIsHeld) {
  press(40, 0);
  EXPECT_TRUE(held(60, 0));
  EXPECT_TRUE(held(700, 0));
}

TEST_F(ShortcutHoldTest, TheModifiersFollowTheKey) {
  press(40, 0);
  EXPECT_TRUE(held(100, 90));
  EXPECT_TRUE(held(150, 130));
  EXPECT_FALSE(held(220, 130));
}

TEST_F(ShortcutHoldTest, AMovingPointerDoesNotCountAsHolding) {
  press(40, 0);
  EXPECT_TRUE(held(100, 99));
  EXPECT_FALSE(held(230, 229));
}

TEST_F(ShortcutHoldTest, ACommandLongAfterTheLastInputWasNotRunByAKey) {
  press(1000, 0);
  EXPECT_FALSE(held(1010, 0));
}

TEST_F(ShortcutHoldTest, AnOldPressIsForgotten) {
  press(40, 0);
  EXPECT_FALSE(held(6000, 0));
}

TEST_F(ShortcutHoldTest, TheNextPressIsHeldAnew) {
  press(40, 0);
  EXPECT_FALSE(held(300, 100));
  press(1040, 1000);
  EXPECT_TRUE(held(1060, 1000));
}

TEST_F(ShortcutHoldTest, IsHeldBeforeTheShellHasToldTheLastInput) {
  hold.pressed(start + milliseconds(40));
  EXPECT_TRUE(held(60, 0));
  refine(40, 0);
  EXPECT_TRUE(held(80, 0));
  EXPECT_FALSE(held(300, 100));
}

TEST_F(ShortcutHoldTest, AReleaseBeforeTheShellsAnswerIsSeen) {
  hold.pressed(start + milliseconds(40));
  refine(40, 70);  // It came later than the key.
  EXPECT_TRUE(held(100, 70));
  EXPECT_FALSE(held(200, 70));
}

TEST_F(ShortcutHoldTest, AnAnswerAboutAnEarlierPressChangesNothing) {
  hold.pressed(start + milliseconds(1000));
  hold.pressed(start + milliseconds(1100));
  refine(1000, 0);
  EXPECT_TRUE(held(1110, 1090));
}

}  // namespace
}  // namespace tavin::test
