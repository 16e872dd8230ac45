#include <gtest/gtest.h>

#include "platform/desktop/DesktopEntry.h"

namespace tavin::desktop {
namespace {

TEST(DesktopEntryTest, ReadsItsOwnGroupOnly) {
  const auto entries = parseDesktopEntry(
      "# comment\nName=before\n[Desktop Entry]\r\n Hidden = true\r\nExec=a=b\n\n=x\n"
      "[Desktop Action x]\nHidden=false\n");
  EXPECT_EQ(entries.size(), 2);
  EXPECT_EQ(entries.value("Hidden"), "true");
  EXPECT_EQ(entries.value("Exec"), "a=b");
  EXPECT_TRUE(parseDesktopEntry("\xff\0[").isEmpty());
}

TEST(DesktopEntryTest, QuotesAnArgumentOfExec) {
  EXPECT_EQ(desktopEntryExecArgument("/usr/bin/tavin"), "\"/usr/bin/tavin\"");
  EXPECT_EQ(desktopEntryExecArgument("/a b/ta'vin"), "\"/a b/ta'vin\"");
  // Quoting adds a backslash, and each backslash is doubled by the rule for strings.
  EXPECT_EQ(desktopEntryExecArgument("a\"b"), R"("a\\"b")");
  EXPECT_EQ(desktopEntryExecArgument("a$b`c"), R"("a\\$b\\`c")");
  EXPECT_EQ(desktopEntryExecArgument("a\\b"), R"("a\\\\b")");
  EXPECT_EQ(desktopEntryExecArgument("100%u"), R"("100%%u")");
}

TEST(DesktopEntryTest, EscapesAString) {
  EXPECT_EQ(desktopEntryString(" a\nb\\n"), R"(\sa\nb\\n)");
  EXPECT_EQ(desktopEntryString("Größe"), "Größe");
}

}  // namespace
}  // namespace tavin::desktop
