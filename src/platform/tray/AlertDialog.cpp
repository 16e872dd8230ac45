#include "platform/tray/AlertDialog.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBoundaryFinder>
#include <algorithm>

#include "platform/tray/TrayImage.h"

namespace tavin::tray {

namespace {

constexpr int textWidth = 400;
// What is longer, such as an engine's whole traceback, scrolls: the buttons must stay on the
// screen.
constexpr int longText = 600;
constexpr int manyLines = 12;
constexpr int longWord = 40;  // A label cannot wrap inside a word.
// Paragraphs are laid out whole, when they come into view: a megabyte in one takes minutes.
constexpr qsizetype longestParagraph = 2000;

QLabel* makeLabel(const QString& text) {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  label->setWordWrap(true);
  label->setMinimumWidth(textWidth);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QWidget* makeHeading(const QString& text) {
  QLabel* label = makeLabel(text);
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

QWidget* makeText(const QString& text) {
  if (fitsALabel(text))
    return makeLabel(text);
  auto* view = new QPlainTextEdit(inShortParagraphs(text));
  view->setReadOnly(true);
  view->setTabChangesFocus(true);
  view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  view->setMinimumWidth(textWidth);
  return view;
}

QLineEdit* makeSecureField() {
  auto* field = new QLineEdit;
  field->setEchoMode(QLineEdit::Password);
  field->setFixedSize(320, std::max(24, field->sizeHint().height()));
  return field;
}

// For title bars and window lists; drawn here, so also where it is not installed in the theme.
QIcon programIcon() {
  QIcon icon;
  for (const QImage& image : trayImage(QStringLiteral("waveform.circle.fill")).pixmaps)
    icon.addPixmap(QPixmap::fromImage(image));
  return icon;
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
  setWindowFlag(Qt::WindowStaysOnTopHint);
  setAttribute(Qt::WA_QuitOnClose, false);
  setAccessibleName(alert.messageText);
  setAccessibleDescription(alert.informativeText);
  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(makeHeading(alert.messageText));
  layout->addWidget(makeText(alert.informativeText));
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
}

// No button box: those take the order of the buttons from the desktop's theme.
QHBoxLayout* AlertDialog::makeButtons(const QStringList& titles) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (int i = 0; i < titles.size(); ++i) {
    auto* button = new QPushButton(QString(titles[i]).replace('&', QLatin1String("&&")));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, i] {
      button_ = AlertResponse::firstButton + i;
      accept();
    });
    row->addWidget(button);
    if (i != 0)
      continue;
    button->setDefault(true);
    button->setFocus();
  }
  return row;
}

AlertResponse AlertDialog::takeResponse() {
  return {button_, field_ != nullptr ? wipe(*field_) : QString()};
}

}  // namespace tavin::tray
