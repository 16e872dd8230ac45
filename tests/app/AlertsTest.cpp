#include <gmock/gmock.h>

#include <utility>

#include "fake/LaunchedApp.h"

namespace tavin::test {
namespace {

using ::testing::ElementsAre;

class AlertsTest : public LaunchedApp {
 protected:
  AlertsTest() { launch(); }
  std::size_t shown() const { return fakes.alerts.shown.size(); }
};

TEST_F(AlertsTest, ErrorAlertHasTheFixedTitleTheMessageAndNoButtons) {
  app->showError(QStringLiteral("something <b>broke</b>"));
  ASSERT_EQ(shown(), 1U);
  const Alert& alert = fakes.alerts.shown[0];
  EXPECT_EQ(alert.messageText, QStringLiteral("Tavin couldn't read that"));
  EXPECT_EQ(alert.informativeText, QStringLiteral("something <b>broke</b>"));
  EXPECT_TRUE(alert.buttons.isEmpty());
  EXPECT_FALSE(alert.secureField);
  EXPECT_THAT(lines(), ElementsAre("main: activate", "main: alert Tavin couldn't read that"));
}

TEST_F(AlertsTest, SameErrorTwiceInARowGivesOneAlert) {
  app->showError(QStringLiteral("A"));
  app->showError(QStringLiteral("A"));
  EXPECT_EQ(shown(), 1U);
}

TEST_F(AlertsTest, ErrorsABAGiveThreeAlerts) {
  for (const char* text : {"A", "B", "A"}) app->showError(QString::fromLatin1(text));
  EXPECT_EQ(shown(), 3U);
}

TEST_F(AlertsTest, EmptyFirstErrorIsShownAndASecondOneSuppressed) {
  app->showError(QString());
  ASSERT_EQ(shown(), 1U);
  EXPECT_EQ(fakes.alerts.shown[0].informativeText, QString());
  app->showError(QStringLiteral(""));
  EXPECT_EQ(shown(), 1U);
}

TEST_F(AlertsTest, CanonicallyEquivalentErrorsAreTheSameButLetterCaseCounts) {
  app->showError(QStringLiteral("caf\u00e9"));
  app->showError(QStringLiteral("cafe\u0301"));
  EXPECT_EQ(shown(), 1U);
  app->showError(QStringLiteral("Caf\u00e9"));
  EXPECT_EQ(shown(), 2U);
}

TEST_F(AlertsTest, ErrorIsRememberedBeforeItsAlertShows) {
  // The alert is still open: nobody has answered it.
  app->showError(QStringLiteral("A"));
  ASSERT_EQ(fakes.alerts.completions.size(), 1U);
  app->showError(QStringLiteral("A"));
  EXPECT_EQ(shown(), 1U);
}

TEST_F(AlertsTest, MessagesThatDifferInTheirPercentageAreEachShown) {
  app->showError(QStringLiteral("Tavin is downloading its voices (45%). This happens once."));
  app->showError(QStringLiteral("Tavin is downloading its voices (46%). This happens once."));
  EXPECT_EQ(shown(), 2U);
}

TEST_F(AlertsTest, HelpSaysWhereToGoAndOffersToOpenIt) {
  app->showAccessibilityHelp();
  ASSERT_EQ(shown(), 1U);
  const Alert& alert = fakes.alerts.shown[0];
  EXPECT_EQ(alert.messageText, QStringLiteral("Tavin needs Accessibility access"));
  EXPECT_EQ(alert.informativeText,
            QStringLiteral("To read selected text in other apps, turn on Tavin in System Settings "
                           "> Privacy & Security > Accessibility. If Tavin is already listed, "
                           "remove it with the minus button and add it again (this happens after "
                           "a rebuild)."));
  EXPECT_EQ(alert.buttons, QStringList({"Open Settings", "Cancel"}));
  EXPECT_THAT(lines(),
              ElementsAre("main: activate", "main: alert Tavin needs Accessibility access"));
}

TEST_F(AlertsTest, HelpOpensTheSettingsOnceForItsFirstButtonAndNothingForCancel) {
  app->showAccessibilityHelp();
  fakes.alerts.answer({.button = AlertResponse::firstButton, .text = {}});
  EXPECT_EQ(fakes.journal.count("main: open settings"), 1);
  for (const int button : {AlertResponse::firstButton + 1, 0}) {
    app->showAccessibilityHelp();
    fakes.alerts.answer({.button = button, .text = {}});
  }
  EXPECT_EQ(fakes.journal.count("main: open settings"), 1);
}

TEST_F(AlertsTest, HelpLeavesTheLastErrorAlone) {
  app->showError(QStringLiteral("A"));
  app->showAccessibilityHelp();
  app->showError(QStringLiteral("A"));
  EXPECT_EQ(shown(), 2U);
}

TEST_F(AlertsTest, HelpLeavesOutTheButtonWhereThereIsNothingToOpen) {
  fakes.workspace.hasSettings = false;
  app->showAccessibilityHelp();
  EXPECT_EQ(fakes.alerts.shown[0].buttons, QStringList("Cancel"));
  fakes.alerts.answer({.button = AlertResponse::firstButton, .text = {}});
  EXPECT_EQ(fakes.journal.count("main: open settings"), 0);
}

TEST_F(AlertsTest, HelpIsShownOnEachOfTwoRequestsWithoutThePermission) {
  fakes.accessibility.trusted = false;
  app->speakSelection();
  app->speakSelection();
  fakes.settle();
  EXPECT_EQ(fakes.journal.count("main: alert Tavin needs Accessibility access"), 2);
}

TEST_F(AlertsTest, AnswerToTheHelpLeavesTheLastErrorAlone) {
  for (const int button : {0, AlertResponse::firstButton, AlertResponse::firstButton + 1}) {
    app->showError(QStringLiteral("A"));
    app->showAccessibilityHelp();
    for (const auto& completion : std::exchange(fakes.alerts.completions, {}))
      completion({.button = button, .text = {}});
    const std::size_t before = shown();
    app->showError(QStringLiteral("A"));
    EXPECT_EQ(shown(), before) << button;
  }
}

}  // namespace
}  // namespace tavin::test
