#include <gtest/gtest.h>

#include <clocale>

#include "menu/MenuItems.h"

namespace tavin::test {
namespace {

TEST(MenuItemsTest, SpeedsDropTrailingZeros) {
  EXPECT_EQ(speedText(0.8), QStringLiteral("0.8x"));
  EXPECT_EQ(speedText(1.0), QStringLiteral("1x"));
  EXPECT_EQ(speedText(1.25), QStringLiteral("1.25x"));
  EXPECT_EQ(speedText(1.23456789), QStringLiteral("1.23457x"));
  EXPECT_EQ(speedText(1e-10), QStringLiteral("1e-10x"));
  EXPECT_EQ(speedText(1e300), QStringLiteral("1e+300x"));
}

TEST(MenuItemsTest, NumbersFollowTheCLocaleWhateverTheUsersLocaleIs) {
  for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
    std::setlocale(LC_ALL, locale);
    EXPECT_EQ(speedText(1.25), QStringLiteral("1.25x"));
  }
  std::setlocale(LC_ALL, "C");
}

TEST(MenuItemsTest, FirstCharactersAreThoseAReaderCounts) {
  EXPECT_EQ(firstCharacters(QStringLiteral("abc"), 2), QStringLiteral("ab"));
  EXPECT_EQ(firstCharacters(QStringLiteral("abc"), 3), QStringLiteral("abc"));
  EXPECT_EQ(firstCharacters(QStringLiteral("abc"), 60), QStringLiteral("abc"));
  EXPECT_EQ(firstCharacters(QString(), 60), QString());
  EXPECT_EQ(firstCharacters(QStringLiteral("e\u0301🇩🇪x"), 2), QStringLiteral("e\u0301🇩🇪"));
}

}  // namespace
}  // namespace tavin::test
