#include <gtest/gtest.h>

#include <QCoreApplication>
#include <array>
#include <map>

#include "platform/desktop/Catalogue.h"

namespace tavin::desktop {
namespace {

// An installed catalogue goes with its application.
class CatalogueTest : public testing::Test {
 protected:
  ~CatalogueTest() override { setRightToLeft(false); }
  static QString shown(const char* text, const char* situation = nullptr) {
    return QCoreApplication::translate("Menu", text, situation);
  }

  int argc_ = 1;
  std::array<char, 10> name_{"catalogue"};
  std::array<char*, 2> argv_{name_.data(), nullptr};
  QCoreApplication application_{argc_, argv_.data()};
};

using Variables = std::map<const char*, const char*>;

QStringList languagesIn(const Variables& variables) {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) qunsetenv(variable);
  for (const auto& [variable, value] : variables) qputenv(variable, value);
  return messageLanguages();
}

TEST(MessageLanguagesTest, AreNoneInTheCLocaleWhateverElseIsSaid) {
  EXPECT_EQ(languagesIn({}), QStringList());
  EXPECT_EQ(languagesIn({{"LANG", "C"}}), QStringList());
  EXPECT_EQ(languagesIn({{"LANG", "POSIX"}}), QStringList());
  EXPECT_EQ(languagesIn({{"LANG", "de_DE.UTF-8"}, {"LC_ALL", "C.UTF-8"}}), QStringList());
  EXPECT_EQ(languagesIn({{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}), QStringList());
  EXPECT_EQ(languagesIn({{"LANGUAGE", "de"}}), QStringList());
}

TEST(MessageLanguagesTest, AreTheLocalesUnlessTheUserListsThem) {
  EXPECT_EQ(languagesIn({{"LANG", "de_AT.UTF-8@euro"}}), QStringList("de_AT"));
  EXPECT_EQ(languagesIn({{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}),
            QStringList("fr_FR"));
  EXPECT_EQ(languagesIn({{"LC_MESSAGES", "fr_FR.UTF-8"}, {"LC_ALL", "pl_PL"}}),
            QStringList("pl_PL"));
  EXPECT_EQ(languagesIn({{"LANG", "de_AT.UTF-8"}, {"LANGUAGE", "nn_NO:C:fr"}}),
            QStringList({"nn_NO", "fr", "de_AT"}));
}

TEST_F(CatalogueTest, InTheCLocaleNothingIsTranslated) {
  installCatalogue({});
  EXPECT_EQ(shown("Speak Selection"), QStringLiteral("Speak Selection"));
  EXPECT_EQ(shown("macOS Speak Selection also uses ⌥ Esc.", "GNOME"),
            QStringLiteral("macOS Speak Selection also uses ⌥ Esc."));
  EXPECT_FALSE(isRightToLeft());
}

TEST_F(CatalogueTest, TheFirstLanguageWithACatalogueIsTaken) {
  installCatalogue({"ja_JP", "de_AT", "fr"});
  EXPECT_EQ(shown("Speak Selection"), QStringLiteral("Auswahl vorlesen"));
  EXPECT_FALSE(isRightToLeft());
}

TEST_F(CatalogueTest, ABrazilianGetsTheirOwnPortuguese) {
  installCatalogue({"pt_BR"});
  EXPECT_EQ(shown("Loading…"), QStringLiteral("Carregando…"));
  installCatalogue({"pt_PT"});
  EXPECT_EQ(shown("Loading…"), QStringLiteral("A carregar…"));
}

TEST_F(CatalogueTest, EnglishIsThatOfLinuxDesktopsAndServesWhereThereIsNoOther) {
  installCatalogue({"ja_JP"});
  EXPECT_EQ(shown("⚠︎ %1 is taken by another app"),
            QStringLiteral("⚠︎ %1 is taken by the desktop or another program"));
  EXPECT_EQ(shown("macOS Speak Selection also uses ⌥ Esc.", "GNOME"),
            QStringLiteral("GNOME switches windows with Alt+Escape."));
}

TEST_F(CatalogueTest, ADesktopThatIsNotToldApartGetsTheGeneralText) {
  installCatalogue({"en_GB"});
  EXPECT_EQ(shown("macOS Speak Selection also uses ⌥ Esc.", "another"),
            QStringLiteral("Some desktops use Alt+Escape themselves."));
}

TEST_F(CatalogueTest, ArabicIsLaidOutFromRightToLeft) {
  installCatalogue({"ar_EG"});
  EXPECT_TRUE(isRightToLeft());
}

}  // namespace
}  // namespace tavin::desktop
