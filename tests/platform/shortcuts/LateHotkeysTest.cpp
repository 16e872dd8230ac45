#include <gmock/gmock.h>

#include "platform/shortcuts/FakeService.h"
#include "platform/shortcuts/LateHotkeys.h"

namespace tavin::test {
namespace {

using shortcuts::Answer;
using shortcuts::KeyCombination;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr KeyCombination speak{.modifiers = KeyCombination::alt};
constexpr KeyCombination pause{.modifiers = KeyCombination::alt | KeyCombination::shift};

class LateHotkeysTest : public ::testing::Test {
 protected:
  void SetUp() override {
    late.tell([this](const KeyCombination& combination) { pressed.push_back(combination); },
              [this](const KeyCombination& combination, const Answer& answer) {
                answers.emplace_back(combination, answer);
              });
  }
  void desktopComes() { arrived(std::make_unique<FakeService>(desktop)); }

  DesktopState desktop;
  shortcuts::LateHotkeys::Arrived arrived;
  std::shared_ptr<int> wait = std::make_shared<int>();
  std::vector<KeyCombination> pressed;
  std::vector<std::pair<KeyCombination, Answer>> answers;
  shortcuts::LateHotkeys late{"not yet", [this](shortcuts::LateHotkeys::Arrived given) {
                                arrived = std::move(given);
                                return std::shared_ptr<void>(wait);
                              }};
};

TEST_F(LateHotkeysTest, WhatIsAddedBeforeTheDesktopComesIsPendingAndGrantedThen) {
  const Answer before = late.add(speak);
  EXPECT_EQ(before.state, HotkeyState::pending);
  EXPECT_EQ(before.reason, "not yet");
  desktopComes();
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_EQ(answers[0].first, speak);
  EXPECT_EQ(answers[0].second.state, HotkeyState::granted);
  desktop.press(speak);
  EXPECT_THAT(pressed, ElementsAre(speak));
}

TEST_F(LateHotkeysTest, WhatIsAddedLaterIsAnsweredAtOnceAndCanBeGivenBack) {
  desktopComes();
  EXPECT_EQ(late.add(speak).state, HotkeyState::granted);
  EXPECT_THAT(answers, IsEmpty());
  late.remove(speak);
  EXPECT_THAT(desktop.held, IsEmpty());
}

TEST_F(LateHotkeysTest, WhatWasGivenBackBeforeTheDesktopCameIsNotAdded) {
  late.add(speak);
  late.remove(speak);
  desktopComes();
  EXPECT_THAT(desktop.held, IsEmpty());
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(LateHotkeysTest, ARefusalAndALaterAnswerAreTold) {
  desktop.answer = Answer::refused("held");
  late.add(speak);
  desktopComes();
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_EQ(answers[0].second.reason, "held");
  desktop.answer = Answer::granted();
  late.add(pause);
  desktop.tellAnswer(pause, Answer::refused("gone"));
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[1].first, pause);
  EXPECT_EQ(answers[1].second.reason, "gone");
}

TEST_F(LateHotkeysTest, GivesBackWhatTheServiceGivesBack) {
  late.release();
  EXPECT_FALSE(desktop.released);
  desktopComes();
  late.release();
  EXPECT_TRUE(desktop.released);
}

TEST_F(LateHotkeysTest, KeepsTheWaitAsLongAsItLives) {
  {
    const shortcuts::LateHotkeys other("not yet", [this](const auto&) { return wait; });
    EXPECT_EQ(wait.use_count(), 3);
  }
  EXPECT_EQ(wait.use_count(), 2);
}

}  // namespace
}  // namespace tavin::test
