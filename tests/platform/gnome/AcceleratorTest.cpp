#include <gtest/gtest.h>

#include "platform/HotkeyService.h"
#include "platform/gnome/Accelerator.h"

namespace tavin::test {
namespace {

using gnome::Accelerator;
using gnome::BothAccelerators;
using shortcuts::KeyCombination;
using namespace HotkeyModifiers;

constexpr std::uint32_t escape = 53;
constexpr std::uint32_t ansiR = 15;

BothAccelerators keysOf(std::uint32_t keyCode, std::uint32_t modifiers) {
  return BothAccelerators::of(*KeyCombination::of(keyCode, modifiers));
}

std::string textOf(std::uint32_t keyCode, std::uint32_t modifiers) {
  return keysOf(keyCode, modifiers).ours.text().toStdString();
}

TEST(AcceleratorTest, TavinsCombinationsAsGnomeWritesThem) {
  EXPECT_EQ(textOf(escape, optionKey), "<Alt>Escape");
  EXPECT_EQ(textOf(escape, controlKey | shiftKey), "<Shift><Control>Escape");
  EXPECT_EQ(textOf(ansiR, controlKey | optionKey), "<Control><Alt>0x1b");
  EXPECT_EQ(textOf(escape, cmdKey), "<Super>Escape");
}

TEST(AcceleratorTest, TheSameCombinationIsKnownHoweverItIsWritten) {
  const auto pause = keysOf(escape, controlKey | shiftKey);
  for (const char* text :
       {"<Primary><Shift>Escape", "<Shift><Ctrl>escape", "<control><shft>Escape"})
    EXPECT_TRUE(pause.isThe(*Accelerator::parse(text))) << text;
  for (const char* text : {"<Primary>Escape", "<Shift><Control><Alt>Escape", "<Shift><Ctrl>r"})
    EXPECT_FALSE(pause.isThe(*Accelerator::parse(text))) << text;
}

TEST(AcceleratorTest, TheRKeyIsKnownByItsSymbolAndByItsPlace) {
  const auto speak = keysOf(ansiR, controlKey | optionKey);
  EXPECT_TRUE(speak.isThe(*Accelerator::parse("<Ctrl><Alt>R")));
  EXPECT_TRUE(speak.isThe(*Accelerator::parse("<Mod1><Control>0x1B")));
  EXPECT_FALSE(speak.isThe(*Accelerator::parse("<Ctrl><Alt>t")));
}

TEST(AcceleratorTest, WhatIsNoCombinationIsNone) {
  for (const char* text : {"", "disabled", "<Control>", "<Control", "<Hyper>r"})
    EXPECT_FALSE(Accelerator::parse(text)) << text;
}

}  // namespace
}  // namespace tavin::test
