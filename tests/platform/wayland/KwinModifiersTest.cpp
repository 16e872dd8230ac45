#include <gtest/gtest.h>

#include "platform/Eventually.h"
#include "platform/Keyboard.h"
#include "platform/wayland/FakeCompositor.h"
#include "platform/wayland/KwinModifiers.h"

namespace tavin::wayland {
namespace {

class KwinModifiersTest : public testing::Test {
 protected:
  test::FakeCompositor fake_{"nothing of interest"};
  std::unique_ptr<KwinModifiers> states_ = KwinModifiers::create(Deadline::in(2));
};

TEST_F(KwinModifiersTest, TellsWhatIsHeldNow) {
  // On a busy machine an answer may be late.
  EXPECT_TRUE(eventually([&] { return states_->modifiers() == 0; }));
  const std::pair<std::uint32_t, std::uint64_t> known[] = {{3, EventFlags::option},
                                                           {4, EventFlags::control},
                                                           {5, EventFlags::shift},
                                                           {6, EventFlags::command},
                                                           {7, EventFlags::option}};
  for (const auto& [key, flag] : known) {
    fake_.hold(key);
    EXPECT_TRUE(eventually([&, wanted = flag] { return states_->modifiers() == wanted; })) << key;
  }
}

TEST_F(KwinModifiersTest, WithoutAnAnswerAltCountsAsHeld) {
  fake_.hang();
  // It may be about to give one still.
  EXPECT_TRUE(eventually([&] { return states_->modifiers() == EventFlags::option; }));
}

TEST_F(KwinModifiersTest, AfterTheCompositorsEndAltCountsAsHeld) {
  fake_.end();
  EXPECT_EQ(states_->modifiers(), EventFlags::option);
}

}  // namespace
}  // namespace tavin::wayland
