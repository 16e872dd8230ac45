#include <gmock/gmock.h>

#include "platform/shortcuts/FakeService.h"
#include "platform/shortcuts/RegisteredHotkeys.h"

namespace tavin::test {
namespace {

using shortcuts::Answer;
using shortcuts::KeyCombination;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace HotkeyModifiers;

constexpr KeyCombination altEscape{.modifiers = KeyCombination::alt};

class RegisteredHotkeysTest : public ::testing::Test {
 protected:
  void SetUp() override {
    hotkeys.installEventHandler([this](EventHotKeyID id) { pressed.push_back(id.id); });
    hotkeys.installAnswerHandler(
        [this](const HotkeyRegistration& answer) { answers.push_back(answer); });
  }
  HotkeyRegistration add(std::uint32_t id, std::uint32_t modifiers = optionKey) {
    return hotkeys.registerEventHotKey(HotkeyKeys::escape, modifiers, {.signature = 1, .id = id});
  }

  DesktopState desktop;
  std::vector<std::uint32_t> pressed;
  std::vector<HotkeyRegistration> answers;
  shortcuts::RegisteredHotkeys hotkeys{std::make_unique<FakeService>(desktop)};
};

TEST(KeyCombinationTest, EachModifierAndBothKeysHaveTheirOwn) {
  const auto all = KeyCombination::of(HotkeyKeys::ansiR, HotkeyModifiers::all);
  ASSERT_TRUE(all);
  EXPECT_EQ(all->key, KeyCombination::Key::ansiR);
  const std::pair<std::uint32_t, KeyCombination::Modifier> pairs[] = {
      {cmdKey, KeyCombination::super},
      {shiftKey, KeyCombination::shift},
      {optionKey, KeyCombination::alt},
      {controlKey, KeyCombination::control}};
  for (const auto& [mask, modifier] : pairs) {
    EXPECT_TRUE(all->has(modifier));
    EXPECT_EQ(KeyCombination::of(HotkeyKeys::escape, mask)->modifiers, modifier);
  }
}

TEST(KeyCombinationTest, AnyOtherKeyOrModifierIsNone) {
  EXPECT_FALSE(KeyCombination::of(0, optionKey));
  EXPECT_FALSE(KeyCombination::of(HotkeyKeys::escape, 0x10000));
}

TEST_F(RegisteredHotkeysTest, APressReachesTheIdOfItsCombination) {
  const HotkeyRegistration granted = add(7);
  EXPECT_EQ(granted.state, HotkeyState::granted);
  EXPECT_EQ(granted.status, 0);
  EXPECT_NE(granted.ref, nullptr);
  desktop.press(altEscape);
  EXPECT_THAT(pressed, ElementsAre(7));
}

TEST_F(RegisteredHotkeysTest, WhatItHoldsAlreadyIsRefusedWithoutAskingTheDesktop) {
  add(1);
  desktop.held.clear();
  const HotkeyRegistration second = add(2);
  EXPECT_EQ(second.state, HotkeyState::refused);
  EXPECT_EQ(second.ref, nullptr);
  EXPECT_THAT(desktop.held, IsEmpty());
}

TEST_F(RegisteredHotkeysTest, UnknownKeysAreRefused) {
  EXPECT_EQ(add(1, 0x10000).state, HotkeyState::refused);
  EXPECT_THAT(desktop.held, IsEmpty());
}

TEST_F(RegisteredHotkeysTest, ARefusalCarriesTheServicesNumberAndReason) {
  desktop.answer = Answer::refused("taken", 10);
  const HotkeyRegistration refused = add(1);
  EXPECT_EQ(refused.status, 10);
  EXPECT_EQ(refused.reason, "taken");
  EXPECT_EQ(refused.ref, nullptr);
}

TEST_F(RegisteredHotkeysTest, WhatIsPendingIsReleasedLikeWhatWasGranted) {
  desktop.answer = Answer::pending("wait");
  const HotkeyRegistration pending = add(1);
  EXPECT_EQ(pending.state, HotkeyState::pending);
  EXPECT_NE(pending.status, 0);
  desktop.tellAnswer(altEscape, Answer::granted());
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_EQ(answers[0].ref, pending.ref);
  EXPECT_EQ(answers[0].state, HotkeyState::granted);
  hotkeys.unregisterEventHotKey(pending.ref);
  hotkeys.unregisterEventHotKey(pending.ref);
  EXPECT_THAT(desktop.held, IsEmpty());
}

TEST_F(RegisteredHotkeysTest, NothingIsToldOfWhatWasReleased) {
  hotkeys.unregisterEventHotKey(add(1).ref);
  desktop.press(altEscape);
  desktop.tellAnswer(altEscape, Answer::refused("gone"));
  EXPECT_THAT(pressed, IsEmpty());
  EXPECT_THAT(answers, IsEmpty());
}

}  // namespace
}  // namespace tavin::test
