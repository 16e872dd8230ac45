#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "platform/Eventually.h"
#include "platform/Keyboard.h"
#include "platform/wayland/FakeCompositor.h"
#include "platform/wayland/FakeInput.h"

namespace tavin::wayland {
namespace {

using Clock = std::chrono::steady_clock;

// A user who waits for the press shall not wait for a compositor that starts.
TEST(FakeInputTest, ACompositorThatWasStartedAgainIsWaitedForBesideTheCaller) {
  std::optional<test::FakeCompositor> first("nothing of interest");
  const auto input = FakeInput::create();
  ASSERT_TRUE(input);
  EXPECT_TRUE(eventually([&] { return input->heldModifiers() == 0; }));
  first.reset();
  test::FakeCompositor second("nothing of interest");
  second.hang();
  const auto begin = Clock::now();
  EXPECT_EQ(input->heldModifiers(), EventFlags::option);
  EXPECT_FALSE(input->prepare());
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(2));
  second.goOn();
  EXPECT_TRUE(eventually([&] { return input->prepare(); }));
}

}  // namespace
}  // namespace tavin::wayland
