#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include "platform/copy/CopyChord.h"

namespace tavin::copy {

bool operator==(const ChordKeys& a, const ChordKeys& b) {
  return a.control == b.control && a.insert == b.insert;
}
void PrintTo(const ChordKeys& keys, std::ostream* out) {
  *out << keys.control << ' ' << keys.insert;
}

namespace {

std::string keymap(const std::string& symbols) {
  return "xkb_keymap {"
         "  xkb_keycodes { minimum = 8; maximum = 255;"
         "    <LCTL> = 37; <CAPS> = 66; <SCLK> = 78; <INS> = 118; };"
         "  xkb_types { type \"ONE_LEVEL\" { modifiers = none; };"
         "    type \"TWO_LEVEL\" { modifiers = Shift; map[Shift] = Level2; }; };"
         "  xkb_compat { };"
         "  xkb_symbols {" +
         symbols + "};};";
}

TEST(CopyChordTest, TakesTheKeysThatBearThem) {
  const auto usual = keymap("key <LCTL> { [ Control_L ] }; key <INS> { [ Insert ] };");
  EXPECT_EQ(chordKeysIn(usual), (ChordKeys{KEY_LEFTCTRL, KEY_INSERT}));
  const auto moved = keymap(
      "key <LCTL> { [ Caps_Lock ] }; key <CAPS> { [ Control_L ] };"
      "key <INS> { [ Delete, Insert ] }; key <SCLK> { [ Insert ] };");
  EXPECT_EQ(chordKeysIn(moved), (ChordKeys{KEY_CAPSLOCK, KEY_SCROLLLOCK}));
}

TEST(CopyChordTest, AKeyThatIsDeleteInAnotherLayoutIsNotTaken) {
  const auto apart = keymap(
      "key <LCTL> { [ Control_L ] }; key <INS> { [ Delete ], [ Insert ] };"
      "key <SCLK> { [ Insert ], [ Delete ] };");
  EXPECT_EQ(chordKeysIn(apart), std::nullopt);
  const auto same = keymap(
      "key <LCTL> { [ Control_L ], [ Control_L ] }; key <INS> { [ Delete ], [ Insert ] };"
      "key <SCLK> { [ Insert ], [ Insert ] };");
  EXPECT_EQ(chordKeysIn(same), (ChordKeys{KEY_LEFTCTRL, KEY_SCROLLLOCK}));
}

TEST(CopyChordTest, WithoutAKeyForItNothingCanBeCopied) {
  EXPECT_EQ(chordKeysIn(keymap("key <LCTL> { [ Control_L ] };")), std::nullopt);
  EXPECT_EQ(chordKeysIn(keymap("key <INS> { [ Insert ] };")), std::nullopt);
}

TEST(CopyChordTest, TheKeymapThatWasToldLastCounts) {
  const auto usual = keymap("key <LCTL> { [ Control_L ] }; key <INS> { [ Insert ] };");
  const auto moved = keymap("key <CAPS> { [ Control_L ] }; key <SCLK> { [ Insert ] };");
  ChordInLayout chord;
  EXPECT_EQ(chord.keys(), ChordKeys());
  for (int change = 0; change < 2; ++change) {
    EXPECT_TRUE(chord.lookUp(moved));
    EXPECT_EQ(chord.keys(), (ChordKeys{KEY_CAPSLOCK, KEY_SCROLLLOCK}));
    EXPECT_TRUE(chord.lookUp(moved));
    EXPECT_EQ(chord.keys(), (ChordKeys{KEY_CAPSLOCK, KEY_SCROLLLOCK}));
    EXPECT_FALSE(chord.lookUp(keymap("key <INS> { [ Insert ] };")));
    EXPECT_TRUE(chord.lookUp(usual));
    EXPECT_EQ(chord.keys(), ChordKeys());
  }
}

TEST(CopyChordTest, WhereNoKeymapIsToldTheUsualKeysAreTaken) {
  EXPECT_EQ(chordKeysIn({}), ChordKeys());
  EXPECT_EQ(chordKeysIn("nonsense"), ChordKeys());
}

}  // namespace
}  // namespace tavin::copy
