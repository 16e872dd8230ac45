#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTranslator>

#include "engine/EngineMessage.h"
#include "menu/MenuFixture.h"
#include "words/Words.h"

namespace tavin::test {
namespace {

using ::testing::Contains;

// A catalogue in which each text is put in brackets, with the situation where there is one. Texts
// in `same` share one translation.
class Brackets final : public QTranslator {
 public:
  Brackets() { QCoreApplication::installTranslator(this); }
  ~Brackets() override { QCoreApplication::removeTranslator(this); }
  QString translate(const char* /*context*/, const char* text, const char* situation,
                    int /*number*/) const override {
    QString shown = QString::fromUtf8(text);
    if (same.contains(shown))
      return QStringLiteral("[same]");
    if (situation != nullptr && *situation != '\0')
      shown += QStringLiteral(" on ") + QLatin1String(situation);
    return u'[' + shown + u']';
  }
  QStringList same;
};

// QCoreApplication asks its translators only while there is one.
class WordsTest : public MenuFixture {
 protected:
  int argc_ = 1;
  char name_[6] = "words";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
};

TEST_F(WordsTest, FillsEachPlaceOnceWhateverTheArgumentsHold) {
  EXPECT_EQ(filled(QStringLiteral("%1 of %2%"), {"%2", "%1"}), QStringLiteral("%2 of %1%"));
  EXPECT_EQ(filled(QStringLiteral("%2, %1, %2"), {"a", "b"}), QStringLiteral("b, a, b"));
  EXPECT_EQ(filled(QStringLiteral("100%"), {}), QStringLiteral("100%"));
  EXPECT_EQ(filled(QStringLiteral("%1 %3 %"), {"a"}), QStringLiteral("a %3 %"));
}

TEST_F(WordsTest, WithoutACatalogueATextShowsAsTheSourceHasIt) {
  const Words text = words("Alert", "Voice setup failed: %1", {QStringLiteral("disk full")});
  EXPECT_EQ(text.source, QStringLiteral("Voice setup failed: disk full"));
  EXPECT_EQ(text.shown, text.source);
}

TEST_F(WordsTest, ACatalogueChangesWhatIsShownAndNotTheSource) {
  const Brackets brackets;
  const Words text = words("Alert", "Failed: %1", {words("Alert", "full")}, "GNOME");
  EXPECT_EQ(text.source, QStringLiteral("Failed: full"));
  EXPECT_EQ(text.shown, QStringLiteral("[Failed: [full] on GNOME]"));
}

TEST_F(WordsTest, RepeatsOfAnErrorAreToldByTheSourceAndNotByItsTranslation) {
  Brackets brackets;
  brackets.same = {"A", "B"};
  for (const char* text : {"A", "B", "B", "A"}) app->showError(words("Alert", text));
  EXPECT_EQ(fakes.alerts.shown.size(), 3U);
  for (const Alert& alert : fakes.alerts.shown)
    EXPECT_EQ(alert.informativeText, QStringLiteral("[same]"));
}

TEST_F(WordsTest, AMessageOfTheEnginesIsTranslatedByItsName) {
  const Brackets brackets;
  const EngineMessage inner{.text = "locked", .id = "keyring-locked", .values = {}};
  const EngineMessage message{.text = "as the engine says it",
                              .id = "key-unreadable",
                              .values = {{.text = "%2", .id = {}, .values = {}}, inner}};
  EXPECT_EQ(message.words().source, QStringLiteral("as the engine says it"));
  EXPECT_EQ(message.words().shown,
            QStringLiteral("[The key for %2 cannot be read: [The keyring was not unlocked.]]"));
}

TEST_F(WordsTest, OtherMessagesOfTheEnginesShowAsTheyAre) {
  const EngineMessage known{.text = "text", .id = "keyring-locked", .values = {}};
  EXPECT_EQ(known.words().shown, QStringLiteral("text"));  // No catalogue.
  const Brackets brackets;
  const EngineMessage value{.text = "too many", .id = {}, .values = {}};
  for (const EngineMessage& message :
       {EngineMessage{.text = "text", .id = {}, .values = {}},
        EngineMessage{.text = "text", .id = "unheard of", .values = {}},
        EngineMessage{.text = "text", .id = "keyring-locked", .values = {value}},
        EngineMessage{.text = "text", .id = "key-unreadable", .values = {value}}})
    EXPECT_EQ(message.words().shown, QStringLiteral("text"));
}

TEST_F(WordsTest, ThePresetsStayAsTheyAreInEveryCatalogue) {
  const Brackets brackets;
  EXPECT_EQ(opened().front(), "[Speak Selection]\t⌥ Esc");
  const auto shortcuts = submenu(QStringLiteral("[Shortcut: ⌥ Esc]"));
  EXPECT_EQ(std::vector(shortcuts.begin(), shortcuts.begin() + 3),
            (std::vector<std::string>{"* ⌥ Esc", "⌃ Esc", "⌃⌥ R"}));
}

TEST_F(WordsTest, TheNoteBelowThePresetsIsThatOfTheDesktop) {
  const Brackets brackets;
  fakes.workspace.name = "GNOME";
  EXPECT_THAT(submenu(QStringLiteral("[Shortcut: ⌥ Esc]")),
              Contains("- [macOS Speak Selection also uses ⌥ Esc. on GNOME]"));
}

TEST_F(WordsTest, WhereNoShortcutCanExistTheWarningIsForThatSituation) {
  const Brackets brackets;
  fakes.hotkeys.refuse(HotkeyKeys::escape, HotkeyModifiers::optionKey, 1);
  app->registerHotkeys();
  EXPECT_THAT(opened(), Contains("- [⚠︎ ⌥ Esc is taken by another app]"));
  fakes.hotkeys.grants = false;
  app->registerHotkeys();
  EXPECT_THAT(opened(), Contains("- [⚠︎ ⌥ Esc is taken by another app on no shortcuts]"));
  EXPECT_THAT(submenu(QStringLiteral("[Shortcut: ⌥ Esc]")),
              Contains("- [macOS Speak Selection also uses ⌥ Esc. on no shortcuts]"));
}

TEST_F(WordsTest, WithoutACatalogueThatWarningIsTheSameInEachSituation) {
  fakes.hotkeys.grants = false;
  fakes.hotkeys.refuse(HotkeyKeys::escape, HotkeyModifiers::optionKey, 1);
  app->registerHotkeys();
  EXPECT_THAT(opened(), Contains("- ⚠︎ ⌥ Esc is taken by another app"));
}

TEST_F(WordsTest, TheHelpIsThatOfTheDesktop) {
  const Brackets brackets;
  fakes.workspace.name = "Plasma";
  app->showAccessibilityHelp();
  EXPECT_TRUE(fakes.alerts.shown.front().informativeText.endsWith(" on Plasma]"));
  EXPECT_EQ(fakes.alerts.shown.front().buttons, QStringList({"[Open Settings]", "[Cancel]"}));
}

}  // namespace
}  // namespace tavin::test
