#include <gtest/gtest.h>

#include "platform/gnome/PressFilter.h"

namespace tavin::test {
namespace {

using std::chrono::milliseconds;

class PressFilterTest : public ::testing::Test {
 protected:
  // A run of the command at `now` when the last input was at `input`, in milliseconds from a start;
  // the latter is known to a millisecond or two.
  bool run(int now, int input) {
    return filter.isPress(start + milliseconds(now),
                          {start + milliseconds(input - 1), start + milliseconds(input + 1)});
  }
  const gnome::Clock::time_point start = gnome::Clock::now();
  gnome::PressFilter filter;
};

TEST_F(PressFilterTest, AHeldKeyIsOnePress) {
  EXPECT_TRUE(run(25, 0));
  for (int now = 520; now < 5000; now += 30) EXPECT_FALSE(run(now, 0));
}

TEST_F(PressFilterTest, QuickPressesAreOneEach) {
  EXPECT_TRUE(run(25, 0));
  EXPECT_TRUE(run(75, 50));
  EXPECT_TRUE(run(125, 100));
}

TEST_F(PressFilterTest, RunsThatArriveAfterTheReleaseOfAHeldKeyAreNoPresses) {
  EXPECT_TRUE(run(25, 0));
  EXPECT_FALSE(run(525, 0));
  EXPECT_FALSE(run(560, 540));
  EXPECT_FALSE(run(590, 540));
}

TEST_F(PressFilterTest, ThePressAfterAHeldKeyCounts) {
  EXPECT_TRUE(run(25, 0));
  EXPECT_FALSE(run(525, 0));
  EXPECT_TRUE(run(1025, 1000));
}

TEST_F(PressFilterTest, APressAfterAPauseIsOneWithoutAskingAndItsRepetitionsAreNone) {
  const auto at = [this](int now) { return start + milliseconds(now); };
  EXPECT_TRUE(filter.isSurelyPress(at(25)));
  EXPECT_FALSE(filter.isSurelyPress(at(55)));
  filter.refine(at(25), {at(-1), at(1)});
  EXPECT_FALSE(run(55, 0));
  for (int now = 520; now < 5000; now += 30) {
    EXPECT_FALSE(filter.isSurelyPress(at(now)));
    EXPECT_FALSE(run(now, 0));
  }
  EXPECT_FALSE(filter.isSurelyPress(at(7400)));
  EXPECT_TRUE(filter.isSurelyPress(at(7600)));
}

TEST_F(PressFilterTest, APressSoonAfterOneThatWasSureTakesNewInput) {
  const auto at = [this](int now) { return start + milliseconds(now); };
  EXPECT_TRUE(filter.isSurelyPress(at(25)));
  filter.refine(at(25), {at(-1), at(1)});
  EXPECT_TRUE(run(125, 100));
}

TEST_F(PressFilterTest, RunsWithoutInputThatAreFarApartComeFromAProgram) {
  EXPECT_TRUE(run(25, 0));
  EXPECT_TRUE(run(3000, 0));
}

}  // namespace
}  // namespace tavin::test
