#include <gtest/gtest.h>

#include <QKeySequence>

#include "platform/HotkeyService.h"
#include "platform/kde/KeyInPlace.h"
#include "platform/kde/QtKey.h"

namespace tavin::test {
namespace {

using kde::keyInPlaceOfR;
using shortcuts::KeyCombination;
using namespace HotkeyModifiers;

constexpr std::uint32_t escape = 53;
constexpr std::uint32_t ansiR = 15;

std::optional<int> qtKey(std::uint32_t keyCode, std::uint32_t modifiers, int inPlaceOfR) {
  return kde::qtKey(*KeyCombination::of(keyCode, modifiers), inPlaceOfR);
}

std::string named(std::uint32_t keyCode, std::uint32_t modifiers) {
  const auto key = qtKey(keyCode, modifiers, Qt::Key_R);
  return key ? QKeySequence(*key).toString(QKeySequence::PortableText).toStdString() : "";
}

TEST(QtKeyTest, EachOfTavinsCombinations) {
  EXPECT_EQ(named(escape, optionKey), "Alt+Esc");
  EXPECT_EQ(named(escape, optionKey | shiftKey), "Alt+Shift+Esc");
  EXPECT_EQ(named(escape, controlKey), "Ctrl+Esc");
  EXPECT_EQ(named(ansiR, controlKey | optionKey), "Ctrl+Alt+R");
  EXPECT_EQ(named(ansiR, cmdKey), "Meta+R");
}

TEST(QtKeyTest, TheKeyInThePlaceOfRBearsWhatItBears) {
  EXPECT_EQ(qtKey(ansiR, controlKey, Qt::Key_P), Qt::Key_P | Qt::CTRL);
  EXPECT_EQ(qtKey(escape, controlKey, 0), Qt::Key_Escape | Qt::CTRL);
  EXPECT_EQ(qtKey(ansiR, controlKey, 0), std::nullopt);
}

// A keymap with one key, and that key's symbols in each layout.
std::string keymapWith(const std::string& layouts) {
  return R"(xkb_keymap {
    xkb_keycodes "k" { <AD04> = 27; };
    xkb_types "t" { type "ONE_LEVEL" { modifiers = none; };
                    type "ALPHABETIC" { modifiers = Shift; map[Shift] = Level2; };
                    type "TWO_LEVEL" { modifiers = Shift; map[Shift] = Level2; }; };
    xkb_compatibility "c" {};
    xkb_symbols "s" { key <AD04> { )" +
         layouts + " }; };\n};";
}

int plain(const std::string& layouts) { return keyInPlaceOfR(keymapWith(layouts), false); }
int shifted(const std::string& layouts) { return keyInPlaceOfR(keymapWith(layouts), true); }

TEST(KeyInPlaceOfRTest, IsTheLatinLetterThere) {
  EXPECT_EQ(plain("[ r, R ]"), Qt::Key_R);
  EXPECT_EQ(shifted("[ r, R ]"), Qt::Key_R);
  EXPECT_EQ(plain("[ p, P ]"), Qt::Key_P);
  EXPECT_EQ(plain("[ Cyrillic_ka, Cyrillic_KA ], [ p, P ], [ r, R ]"), Qt::Key_P);
}

TEST(KeyInPlaceOfRTest, IsAnotherLetterWhereNoLayoutHasALatinOne) {
  EXPECT_EQ(plain("[ Cyrillic_ka, Cyrillic_KA ]"), 0x41a);
  EXPECT_EQ(shifted("[ Cyrillic_ka, Cyrillic_KA ]"), 0x41a);
  EXPECT_EQ(plain("[ hebrew_resh ], [ Greek_rho ]"), 0x5e8);
  EXPECT_EQ(shifted("[ hebrew_resh ]"), 0x5e8);
}

TEST(KeyInPlaceOfRTest, IsAnotherLetterWithShiftWhereTheKeyBearsTwo) {
  EXPECT_EQ(plain("[ hebrew_resh, R ]"), 0x5e8);
  EXPECT_EQ(shifted("[ hebrew_resh, R ]"), Qt::Key_R);
}

TEST(KeyInPlaceOfRTest, IsNoneWhereThereIsNoLetter) {
  EXPECT_EQ(plain("[ dead_acute ]"), 0);
  EXPECT_EQ(plain("[ NoSymbol ]"), 0);
  EXPECT_EQ(plain("[ period ]"), 0);
  EXPECT_EQ(keyInPlaceOfR("xkb_keymap { xkb_keycodes { <AD01> = 24; }; xkb_types { type \"X\" { "
                          "modifiers = none; }; }; xkb_compatibility {}; xkb_symbols {}; };",
                          false),
            0);
}

TEST(KeyInPlaceOfRTest, IsRWhereNothingIsKnown) {
  EXPECT_EQ(keyInPlaceOfR("no keymap", false), Qt::Key_R);
  EXPECT_EQ(keyInPlaceOfR("", true), Qt::Key_R);
}

}  // namespace
}  // namespace tavin::test
