#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTranslator>
#include <algorithm>

#include "InProcessLauncher.h"
#include "TestApplication.h"
#include "platform/desktop/Catalogue.h"
#include "platform/tray/AlertQueue.h"

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

// The key as a window system sends it.
void press(QWidget* widget, int key) {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
    runEvents();
    if (openAlert() == nullptr)
      return;
  }
}

class AlertQueueTest : public ::testing::Test {
 protected:
  // Asks for an alert in front, with an answer that is noted. One is open then.
  void run(const Alert& alert) {
    alerts->activateIgnoringOtherApps();
    alerts->runModal(alert, [this](const AlertResponse& response) { answers.push_back(response); });
    ASSERT_TRUE(waitFor([] { return openAlert() != nullptr; }));
  }
  bool answered(std::size_t count) {
    return waitFor([&] { return answers.size() == count; });
  }

  std::vector<AlertResponse> answers;
  std::unique_ptr<AlertPresenter> alerts = createAlertPresenter(inProcessProgram());
};

QString shownInAView() {
  const auto* view = openAlert()->findChild<QPlainTextEdit*>();
  return view == nullptr ? QString() : view->toPlainText();
}

TEST_F(AlertQueueTest, ALongTextIsShownInFull) {
  const QString lines = QString("a line of a traceback\n").repeated(5000) + "its end";
  run({"heading", lines, {}, false});
  ASSERT_NE(openAlert(), nullptr);
  EXPECT_EQ(shownInAView(), lines);
}

TEST_F(AlertQueueTest, ALongParagraphIsBrokenBetweenCharactersAndShownInFull) {
  const QString family = QString::fromUtf8("👨‍👩‍👧");
  for (const QString& text : {QString(1'000'000, 'x'), "x" + family.repeated(20'000),
                              "e" + QString(50'000, QChar(0x301))}) {
    alerts = createAlertPresenter(inProcessProgram());
    ASSERT_TRUE(waitFor([] { return openAlert() == nullptr; }));
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

// A language and a size of letters, until the end.
class Look {
 public:
  Look(const QString& language, int points) : before_(QApplication::font()) {
    desktop::installCatalogue({language});
    QFont font = before_;
    font.setPointSize(points);
    QApplication::setFont(font);
  }
  ~Look() {
    qDeleteAll(qApp->findChildren<QTranslator*>());
    desktop::setRightToLeft(false);
    QApplication::setFont(before_);
  }
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;

  QString text(const char* source, const char* situation = nullptr) const {
    return QCoreApplication::translate("Alert", source, situation);
  }

 private:
  const QFont before_;
};

void expectWhole() {
  for (const QLabel* label : openAlert()->findChildren<QLabel*>()) {
    const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 1 << 16),
                                                           Qt::TextWordWrap, label->text());
    EXPECT_LE(needed.width(), label->width()) << qPrintable(label->text());
    EXPECT_LE(needed.height(), label->height()) << qPrintable(label->text());
  }
  for (const QPushButton* button : buttons()) {
    EXPECT_GE(button->width(), button->sizeHint().width()) << qPrintable(button->text());
    EXPECT_GE(button->height(), button->sizeHint().height()) << qPrintable(button->text());
    const QFontMetrics letters = button->fontMetrics();
    EXPECT_GE(button->width() - letters.horizontalAdvance(button->text()), 2 * letters.height())
        << "as much beside the title as a line is high: " << qPrintable(button->text());
  }
  const QSize screen = openAlert()->screen()->availableSize();
  EXPECT_LE(openAlert()->width(), screen.width());
  EXPECT_LE(openAlert()->height(), screen.height());
}

// Those of the catalogues that are built in: "pt_BR" of "tavin_pt_BR.qm".
QStringList languages() {
  QStringList found;
  for (const QString& file : QDir(":/translations").entryList({"tavin_*.qm"}))
    found << QFileInfo(file).completeBaseName().section('_', 1);
  return found;
}

Alert longestAlert(const Look& look, const char* desktop) {
  return {
      look.text("Tavin needs Accessibility access"),
      look.text("To read selected text in other apps, turn on Tavin in System Settings > Privacy "
                "& Security > Accessibility. If Tavin is already listed, remove it with the minus "
                "button and add it again (this happens after a rebuild).",
                desktop),
      {look.text("Open Settings"), look.text("Cancel")},
      false};
}

Alert keyDialog(const Look& look) {
  return {look.text("%1 API key").arg("ElevenLabs"),
          look.text("Stored in your macOS Keychain. Leave empty to remove the key."),
          {look.text("Save"), look.text("Cancel")},
          true};
}

TEST_F(AlertQueueTest, NoLanguageAndNoSizeOfLettersCutsAText) {
  ASSERT_TRUE(languages().contains("pt_BR"));
  std::size_t count = 0;
  for (const int points : {10, 16, 30}) {
    for (const QString& language : languages()) {
      const Look look(language, points);
      for (const Alert& alert :
           {longestAlert(look, ""), longestAlert(look, "Plasma"), keyDialog(look)}) {
        ASSERT_NE(alert.informativeText, QString());
        run(alert);
        ASSERT_NE(openAlert(), nullptr);
        expectWhole();
        openAlert()->reject();
        ASSERT_TRUE(answered(++count));
      }
    }
  }
}

TEST_F(AlertQueueTest, AWindowGrowsWithItsLetters) {
  const auto widthOf = [this](int points, std::size_t count) {
    const Look look("en", points);
    run(keyDialog(look));
    const int width = openAlert()->findChild<QLineEdit*>()->width();
    openAlert()->reject();
    EXPECT_TRUE(answered(count));
    return width;
  };
  EXPECT_EQ(widthOf(10, 1), 320);
  EXPECT_GE(widthOf(30, 2), 2 * 320);
}

TEST_F(AlertQueueTest, ShowsTextsAsTheyAreWithASingleButton) {
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

TEST_F(AlertQueueTest, ButtonsStandInOrderAndTheFirstIsTheDefault) {
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

TEST_F(AlertQueueTest, ClosingIsNoButton) {
  run({"title", "text", {"Save", "Cancel"}, false});
  openAlert()->reject();  // What Escape does.
  ASSERT_TRUE(answered(1));
  run({"title", "text", {"Save", "Cancel"}, false});
  openAlert()->close();
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers[0].button, 0);
  EXPECT_EQ(answers[1].button, 0);
}

TEST_F(AlertQueueTest, SecureFieldHasTheKeyboardAndGivesItsTextUnchanged) {
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

TEST_F(AlertQueueTest, OpensOneAfterTheOther) {
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

TEST_F(AlertQueueTest, TheNextOpensAfterTheCompletionRan) {
  bool openWhenCompleted = true;
  alerts->runModal({"first", "", {}, false}, [&](const AlertResponse&) {
    openWhenCompleted = openAlert() != nullptr;
    alerts->runModal({"asked for by the completion", "", {}, false}, {});
  });
  run({"second", "", {}, false});
  buttons()[0]->click();
  ASSERT_TRUE(waitFor([&] { return openAlert() != nullptr && texts()[0] == "second"; }));
  EXPECT_FALSE(openWhenCompleted);
  buttons()[0]->click();
  ASSERT_TRUE(waitFor(
      [&] { return openAlert() != nullptr && texts()[0] == "asked for by the completion"; }));
}

TEST_F(AlertQueueTest, GoesAwayWithAnAlertOpenAndOthersWaiting) {
  run({"first", "", {}, true});
  run({"second", "", {}, false});
  alerts.reset();
  EXPECT_TRUE(waitFor([] { return openAlert() == nullptr; }));
  EXPECT_TRUE(answers.empty());
}

TEST_F(AlertQueueTest, NoTextPushesTheButtonsOffTheScreen) {
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

TEST_F(AlertQueueTest, NoneIsDroppedHoweverManyWait) {
  for (int i = 0; i < 100; ++i) run({QString::number(i), "", {}, false});
  for (std::size_t i = 0; i < 100; ++i) {
    ASSERT_TRUE(
        waitFor([&] { return openAlert() != nullptr && texts()[0] == QString::number(i); }));
    buttons()[0]->click();
    ASSERT_TRUE(answered(i + 1));
  }
}

TEST_F(AlertQueueTest, OneAskedForWhileAnotherIsOpenBringsThatOneToTheFront) {
  run({"first", "", {}, false});
  ASSERT_TRUE(waitFor([] { return openAlert()->isActiveWindow(); }));
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(waitFor([&] { return other.isActiveWindow(); }));
  run({"second", "", {}, false});
  EXPECT_TRUE(waitFor([] { return openAlert()->isActiveWindow(); }));
  EXPECT_EQ(texts()[0], "first");
}

TEST_F(AlertQueueTest, EnterPressesTheButtonThatHasTheKeyboard) {
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    for (const int index : {0, 1}) {
      run({"OpenAI API key", "text", {"Save", "Cancel"}, true});
      ASSERT_TRUE(waitFor([] { return openAlert() != nullptr && openAlert()->isActiveWindow(); }));
      buttons()[index]->setFocus();
      const std::size_t before = answers.size();
      press(buttons()[index], key);
      ASSERT_TRUE(answered(before + 1));
      EXPECT_EQ(answers.back().button, AlertResponse::firstButton + index);
    }
  }
}

TEST_F(AlertQueueTest, EnterInTheFieldIsTheDefaultButtonAfterAnotherHadTheKeyboard) {
  run({"OpenAI API key", "text", {"Save", "Cancel"}, true});
  ASSERT_TRUE(waitFor([] { return openAlert() != nullptr && openAlert()->isActiveWindow(); }));
  auto* field = openAlert()->findChild<QLineEdit*>();
  buttons()[1]->setFocus();
  field->setFocus();
  press(field, Qt::Key_Return);
  ASSERT_TRUE(answered(1));
  EXPECT_EQ(answers[0].button, AlertResponse::firstButton);
}

TEST_F(AlertQueueTest, HasADialogsButtonsOnlyAndTheProgramsIcon) {
  run({"title", "text", {}, false});
  const Qt::WindowFlags flags = openAlert()->windowFlags();
  EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
  EXPECT_FALSE(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
  const QImage icon = openAlert()->windowIcon().pixmap(48).toImage();
  EXPECT_EQ(icon.pixelColor(24, 24), QColor(Qt::white));  // The bar in the middle.
  EXPECT_GT(icon.pixelColor(24, 8).blue(), 0xb0);         // The ground above it.
  EXPECT_LT(icon.pixelColor(24, 8).red(), 0x60);
}

TEST_F(AlertQueueTest, TheFieldIsAsWideAsTheText) {
  run({"OpenAI API key",
       QString("Stored in your keyring. ").repeated(4),
       {"Save", "Cancel"},
       true});
  for (const QLabel* label : openAlert()->findChildren<QLabel*>())
    EXPECT_EQ(label->width(), openAlert()->findChild<QLineEdit*>()->width());
}

}  // namespace
}  // namespace tavin
