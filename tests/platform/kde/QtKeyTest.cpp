#include <gtest/gtest.h>

#include <QKeySequence>

#include "platform/HotkeyService.h"
#include "platform/kde/QtKey.h"

namespace tavin::test {
namespace {

using kde::qtKey;
using namespace HotkeyModifiers;

constexpr std::uint32_t escape = 53;
constexpr std::uint32_t ansiR = 15;

std::string named(std::uint32_t keyCode, std::uint32_t modifiers) {
  const auto key = qtKey(keyCode, modifiers);
  return key ? QKeySequence(*key).toString(QKeySequence::PortableText).toStdString() : "";
}

TEST(QtKeyTest, EachOfTavinsCombinations) {
  EXPECT_EQ(named(escape, optionKey), "Alt+Esc");
  EXPECT_EQ(named(escape, optionKey | shiftKey), "Alt+Shift+Esc");
  EXPECT_EQ(named(escape, controlKey), "Ctrl+Esc");
  EXPECT_EQ(named(ansiR, controlKey | optionKey), "Ctrl+Alt+R");
  EXPECT_EQ(named(ansiR, cmdKey), "Meta+R");
}

TEST(QtKeyTest, AnyOtherKeyOrModifierIsNone) {
  EXPECT_EQ(qtKey(0, optionKey), std::nullopt);
  EXPECT_EQ(qtKey(escape, 0x10000), std::nullopt);
}

}  // namespace
}  // namespace tavin::test
