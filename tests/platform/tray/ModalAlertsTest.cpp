#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "TestApplication.h"
#include "platform/tray/ModalAlerts.h"

namespace tavin {
namespace {

using namespace tavin::test;

QDialog* openAlert() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* dialog = qobject_cast<QDialog*>(widget); dialog != nullptr && dialog->isVisible())
      return dialog;
  return nullptr;
}

// The buttons from the left.
QList<QPushButton*> buttons() {
  auto list = openAlert()->findChildren<QPushButton*>();
  std::sort(list.begin(), list.end(), [](const auto* a, const auto* b) { return a->x() < b->x(); });
  return list;
}

QStringList texts() {
  QStringList list;
  for (const QLabel* label : openAlert()->findChildren<QLabel*>()) {
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    list.append(label->text());
  }
  return list;
}

class ModalAlertsTest : public ::testing::Test {
 protected:
  // Asks for an alert in front, with an answer that is noted.
  void run(const Alert& alert) {
    alerts->activateIgnoringOtherApps();
    alerts->runModal(alert, [this](const AlertResponse& response) { answers.push_back(response); });
  }
  bool answered(std::size_t count) {
    return waitFor([&] { return answers.size() == count; });
  }

  std::vector<AlertResponse> answers;
  std::unique_ptr<AlertPresenter> alerts = createAlertPresenter();
};

QString shownInAView() {
  const auto* view = openAlert()->findChild<QPlainTextEdit*>();
  return view == nullptr ? QString() : view->toPlainText();
}

TEST_F(ModalAlertsTest, ALongTextIsShownInFull) {
  const QString lines = QString("a line of a traceback\n").repeated(5000) + "its end";
  run({"heading", lines, {}, false});
  ASSERT_NE(openAlert(), nullptr);
  EXPECT_EQ(shownInAView(), lines);
}

TEST_F(ModalAlertsTest, ALongParagraphIsBrokenBetweenCharactersAndShownInFull) {
  const QString family = QString::fromUtf8("👨‍👩‍👧");
  for (const QString& text : {QString(1'000'000, 'x'), "x" + family.repeated(20'000),
                              "e" + QString(50'000, QChar(0x301))}) {
    alerts = createAlertPresenter();
    run({"heading", text, {}, false});
    ASSERT_NE(openAlert(), nullptr);
    openAlert()->grab();
    QString shown = shownInAView();
    for (const QString& line : shown.split('\n')) {
      EXPECT_LE(line.size(), 2000);
      EXPECT_TRUE(!text.contains(family) || line.endsWith(family));
    }
    EXPECT_EQ(shown.remove('\n'), text);
  }
}

TEST_F(ModalAlertsTest, ShowsTextsAsTheyAreWithASingleButton) {
  run({"Tavin couldn't read that", "<b>bold</b>\n&amp; plain", {}, false});
  ASSERT_NE(openAlert(), nullptr);
  EXPECT_EQ(texts(), QStringList({"Tavin couldn't read that", "<b>bold</b>\n&amp; plain"}));
  ASSERT_EQ(buttons().size(), 1);
  EXPECT_EQ(buttons()[0]->text(), "OK");
  EXPECT_TRUE(buttons()[0]->isDefault());
  buttons()[0]->click();
  ASSERT_TRUE(answered(1));
  EXPECT_EQ(answers[0].button, AlertResponse::firstButton);
}

TEST_F(ModalAlertsTest, ButtonsStandInOrderAndTheFirstIsTheDefault) {
  run({"title", "text", {"Open Settings", "Cancel"}, false});
  ASSERT_EQ(buttons().size(), 2);
  EXPECT_EQ(buttons()[0]->text(), "Open Settings");
  EXPECT_EQ(buttons()[1]->text(), "Cancel");
  EXPECT_TRUE(buttons()[0]->isDefault());
  EXPECT_FALSE(buttons()[1]->isDefault());
  buttons()[1]->click();
  ASSERT_TRUE(answered(1));
  EXPECT_EQ(answers[0].button, AlertResponse::firstButton + 1);
}

TEST_F(ModalAlertsTest, ClosingIsNoButton) {
  run({"title", "text", {"Save", "Cancel"}, false});
  openAlert()->reject();  // What Escape does.
  ASSERT_TRUE(answered(1));
  run({"title", "text", {"Save", "Cancel"}, false});
  openAlert()->close();
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers[0].button, 0);
  EXPECT_EQ(answers[1].button, 0);
}

TEST_F(ModalAlertsTest, SecureFieldHasTheKeyboardAndGivesItsTextUnchanged) {
  run({"OpenAI API key", "text", {"Save", "Cancel"}, true});
  auto* field = openAlert()->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->echoMode(), QLineEdit::Password);
  EXPECT_EQ(field->width(), 320);
  EXPECT_GE(field->height(), 24);
  EXPECT_EQ(field->text(), "");
  EXPECT_TRUE(waitFor([&] { return field->hasFocus(); })) << "the window manager gave it the focus";
  field->insert("  key & more ");
  buttons()[0]->click();
  ASSERT_TRUE(answered(1));
  EXPECT_EQ(answers[0].text, "  key & more ");
}

TEST_F(ModalAlertsTest, OpensOneAfterTheOther) {
  run({"first", "", {}, false});
  run({"second", "", {}, false});
  run({"third", "", {}, false});
  for (const char* title : {"first", "second", "third"}) {
    ASSERT_TRUE(waitFor([&] { return openAlert() != nullptr && texts()[0] == title; })) << title;
    const std::size_t before = answers.size();
    buttons()[0]->click();
    ASSERT_TRUE(answered(before + 1));
  }
  runEvents();
  EXPECT_EQ(openAlert(), nullptr);
}

TEST_F(ModalAlertsTest, TheNextOpensAfterTheCompletionRan) {
  bool openWhenCompleted = true;
  alerts->runModal({"first", "", {}, false}, [&](const AlertResponse&) {
    openWhenCompleted = openAlert() != nullptr;
    run({"asked for by the completion", "", {}, false});
  });
  run({"second", "", {}, false});
  buttons()[0]->click();
  ASSERT_TRUE(waitFor([&] { return openAlert() != nullptr && texts()[0] == "second"; }));
  EXPECT_FALSE(openWhenCompleted);
  buttons()[0]->click();
  ASSERT_TRUE(waitFor(
      [&] { return openAlert() != nullptr && texts()[0] == "asked for by the completion"; }));
}

TEST_F(ModalAlertsTest, GoesAwayWithAnAlertOpenAndOthersWaiting) {
  run({"first", "", {}, true});
  run({"second", "", {}, false});
  alerts.reset();
  runEvents();
  EXPECT_EQ(openAlert(), nullptr);
  EXPECT_TRUE(answers.empty());
}

TEST_F(ModalAlertsTest, NoTextPushesTheButtonsOffTheScreen) {
  for (const QString& text : {QString("x").repeated(1'000'000), QString("x").repeated(600),
                              "/path" + QString("/x").repeated(130), QString("\n").repeated(300),
                              QString("line\n").repeated(45), QString("word ").repeated(110)}) {
    run({"title", text, {}, false});
    ASSERT_TRUE(waitFor([&] { return openAlert() != nullptr; }));
    // A window manager may tell of the size that it had before it was laid out.
    EXPECT_TRUE(waitFor([&] {
      return openAlert()->height() <= 600 && openAlert()->width() <= 600;
    })) << text.left(20).toStdString();
    buttons()[0]->click();
    ASSERT_TRUE(waitFor([&] { return openAlert() == nullptr; }));
  }
}

TEST_F(ModalAlertsTest, AlertsThatNobodyAnswersDoNotPileUpForEver) {
  for (int i = 0; i < 1000; ++i) run({QString::number(i), "", {}, false});
  int seen = 0;
  for (; openAlert() != nullptr; ++seen) {
    const QString before = texts()[0];
    buttons()[0]->click();
    ASSERT_TRUE(waitFor([&] { return openAlert() == nullptr || texts()[0] != before; }));
    if (openAlert() == nullptr)
      runEvents();
  }
  EXPECT_EQ(seen, 21);  // The open one and those that wait.
}

}  // namespace
}  // namespace tavin
