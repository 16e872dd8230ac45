#include <gtest/gtest.h>

#include "fake/FakeServices.h"
#include "hotkeys/ShortcutPreset.h"

namespace tavin::test {
namespace {

class ShortcutPresetTest : public ::testing::Test {
 protected:
  const ShortcutPreset& current() { return ShortcutPreset::current(defaults); }

  Journal journal;
  FakeUserDefaults defaults{journal};
};

TEST_F(ShortcutPresetTest, TableHoldsTheThreePresetsInOrder) {
  const std::vector<ShortcutPreset> expected{
      {QStringLiteral("opt-esc"), QStringLiteral("\u2325 Esc"), 53, 2048},
      {QStringLiteral("ctrl-esc"), QStringLiteral("\u2303 Esc"), 53, 4096},
      {QStringLiteral("ctrl-opt-r"), QStringLiteral("\u2303\u2325 R"), 15, 6144}};
  EXPECT_EQ(ShortcutPreset::all(), expected);
}

TEST_F(ShortcutPresetTest, NothingStoredIsOptionEscape) {
  EXPECT_EQ(current().id, QStringLiteral("opt-esc"));
  EXPECT_EQ(current().pauseLabel(), QStringLiteral("\u21E7\u2325 Esc"));
}

TEST_F(ShortcutPresetTest, StoredIdIsChosenAtTheNextLook) {
  EXPECT_EQ(current().id, QStringLiteral("opt-esc"));
  defaults.values["shortcut"] = "ctrl-opt-r";
  EXPECT_EQ(current().keyCode, 15);
  EXPECT_EQ(current().modifiers, 6144);
  EXPECT_EQ(current().modifiers | 0x0200, 6656);
}

TEST_F(ShortcutPresetTest, CapitalsOrAnUnknownIdAreOptionEscapeAndStayStored) {
  for (const char* stored : {"CTRL-ESC", "hyper-q", ""}) {
    defaults.values["shortcut"] = stored;
    EXPECT_EQ(current().id, QStringLiteral("opt-esc"));
    EXPECT_EQ(defaults.values["shortcut"], QString::fromLatin1(stored));
  }
}

TEST_F(ShortcutPresetTest, PauseLabelsPutShiftFirst) {
  EXPECT_EQ(ShortcutPreset::all()[1].pauseLabel(), QStringLiteral("\u21E7\u2303 Esc"));
  EXPECT_EQ(ShortcutPreset::all()[2].pauseLabel(), QStringLiteral("\u21E7\u2303\u2325 R"));
}

}  // namespace
}  // namespace tavin::test
