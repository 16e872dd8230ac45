#include "platform/widgets/AlertDialog.h"

#include <QApplication>
#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBoundaryFinder>
#include <QWindow>
#include <algorithm>

#include "platform/desktop/DesktopName.h"
#include "platform/widgets/DisplayServer.h"
#include "platform/widgets/ProgramImage.h"

namespace tavin::widgets {

namespace {

constexpr int textWidth = 400;
constexpr int fieldWidth = 320;
// What is longer, such as an engine's whole traceback, scrolls: the buttons must stay on the
// screen.
constexpr int longText = 600;
constexpr int manyLines = 12;
constexpr int longWord = 40;     // A label cannot wrap inside a word.
constexpr int usualLetter = 10;  // Letters of the usual size are no wider on average.
// Paragraphs are laid out whole, when they come into view: a megabyte in one takes minutes.
constexpr qsizetype longestParagraph = 2000;

// A line holds as many letters where they are large.
int forLetters(int width) {
  return width * std::max(usualLetter, QFontMetrics(QApplication::font()).averageCharWidth()) /
         usualLetter;
}

QLabel* makeLabel(const QString& text, int width) {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  label->setWordWrap(true);
  label->setMinimumWidth(width);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QWidget* makeHeading(const QString& text, int width) {
  QLabel* label = makeLabel(text, width);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

bool fitsALabel(const QString& text) {
  if (text.size() > longText || text.count('\n') >= manyLines)
    return false;
  const QStringList words = text.simplified().split(' ');
  return std::none_of(words.begin(), words.end(),
                      [](const QString& word) { return word.size() > longWord; });
}

// The text with its longest paragraphs broken up, each between two characters.
QString inShortParagraphs(const QString& text) {
  QStringList paragraphs;
  for (const QString& paragraph : text.split('\n')) {
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, paragraph);
    qsizetype begin = 0;
    while (paragraph.size() - begin > longestParagraph) {
      characters.setPosition(begin + longestParagraph);
      qsizetype end = characters.position();
      if (!characters.isAtBoundary())
        end = characters.toPreviousBoundary();
      if (end <= begin)  // One character with ever more accents.
        end = begin + longestParagraph;
      paragraphs << paragraph.sliced(begin, end - begin);
      begin = end;
    }
    paragraphs << paragraph.sliced(begin);
  }
  return paragraphs.join('\n');
}

QWidget* makeText(const QString& text, const QString& heading, int width) {
  if (fitsALabel(text))
    return makeLabel(text, width);
  auto* view = new QPlainTextEdit(inShortParagraphs(text));
  view->setAccessibleName(heading);
  view->setReadOnly(true);
  view->setTabChangesFocus(true);
  view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  view->setMinimumWidth(width);
  return view;
}

QLineEdit* makeSecureField() {
  auto* field = new QLineEdit;
  field->setEchoMode(QLineEdit::Password);
  field->setFixedSize(forLetters(fieldWidth), std::max(24, field->sizeHint().height()));
  return field;
}

QIcon programIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128})
    icon.addPixmap(QPixmap::fromImage(programImage(size)));
  return icon;
}

// A dialog's buttons only: it can be closed, and no more. GNOME leaves the frame of a window on
// Wayland to its program, and Qt's has buttons to minimise and maximise whatever it is told.
// GNOME's own alerts have no frame either.
Qt::WindowFlags frame() {
  if (isOnWayland() && desktop::isGnome())
    return Qt::FramelessWindowHint;
  return Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
}

// Fusion's margin beside a title is a few pixels, and does not grow with the letters.
int roomyWidth(const QString& title) {
  const QFontMetrics letters(QApplication::font("QPushButton"));
  return letters.horizontalAdvance(title) + 2 * letters.height();
}

// Takes the text and leaves zeros where the field had it.
QString wipe(QLineEdit& field) {
  const QString shared = field.text();
  QString taken(shared.constData(), shared.size());
  std::fill_n(const_cast<QChar*>(shared.constData()), shared.size(), QChar(0));
  field.clear();
  return taken;
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert) {
  setWindowTitle("Tavin");
  setWindowIcon(programIcon());
  setWindowFlags(Qt::Dialog | Qt::WindowStaysOnTopHint | frame());
  setAttribute(Qt::WA_QuitOnClose, false);
  setAccessibleName(alert.messageText);
  setAccessibleDescription(alert.informativeText);
  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  const int width = forLetters(alert.secureField ? fieldWidth : textWidth);
  layout->addWidget(makeHeading(alert.messageText, width));
  layout->addWidget(makeText(alert.informativeText, alert.messageText, width));
  if (alert.secureField) {
    field_ = makeSecureField();
    field_->setAccessibleName(alert.messageText);
    layout->addWidget(field_);
  }
  layout->addLayout(makeButtons(alert.buttons.isEmpty()
                                    ? QStringList{QCoreApplication::translate("Alert", "OK")}
                                    : alert.buttons));
  if (field_ != nullptr)
    field_->setFocus();
  else
    findChild<QPushButton*>()->setFocus();
}

// No button box: those take the order of the buttons from the desktop's theme.
QHBoxLayout* AlertDialog::makeButtons(const QStringList& titles) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (int i = 0; i < titles.size(); ++i) {
    auto* button = new QPushButton(QString(titles[i]).replace('&', QLatin1String("&&")));
    button->setMinimumWidth(std::max(button->minimumSizeHint().width(), roomyWidth(titles[i])));
    // Whatever the desktop's theme says of keys, Enter presses the button that has the keyboard: a
    // dialog's default button would take it otherwise, and save an empty key for "Cancel".
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [this, i] {
      button_ = AlertResponse::firstButton + i;
      accept();
    });
    button->setDefault(i == 0);
    row->addWidget(button);
  }
  return row;
}

// Draws the window's edge where it has no frame.
void AlertDialog::paintEvent(QPaintEvent*) {
  if (!windowFlags().testFlag(Qt::FramelessWindowHint))
    return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

// Without a frame, the window is dragged by its background.
void AlertDialog::mousePressEvent(QMouseEvent* event) {
  if (windowFlags().testFlag(Qt::FramelessWindowHint) && event->button() == Qt::LeftButton)
    windowHandle()->startSystemMove();
}

AlertResponse AlertDialog::takeResponse() {
  return {button_, field_ != nullptr ? wipe(*field_) : QString()};
}

}  // namespace tavin::widgets
