// A window with an editable text, given as the first argument. With "--bare" as the second, a
// widget that accessibility does not see into, that never owns the selection and copies on
// Ctrl+Insert alone, after having been busy for as many milliseconds as the third says; it prints
// "asked" before, "copied at" and when on the system's monotonic clock after, and its title tells
// how often it has copied: "Qt 6 field, copied 1". With
// "--password", a password field; the title is "Password field", and "Password field, all selected"
// while the whole password is, which nothing else tells.
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QThread>
#include <chrono>
#include <iomanip>
#include <iostream>

namespace {

double secondsNow() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

class BareText : public QWidget {
 public:
  BareText(QString text, unsigned long busyMs) : text_(std::move(text)), busyMs_(busyMs) {
    setFocusPolicy(Qt::StrongFocus);
  }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).drawText(rect(), text_); }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_Insert || event->modifiers() != Qt::ControlModifier)
      return;
    std::cout << "asked" << std::endl;
    QThread::msleep(busyMs_);
    QGuiApplication::clipboard()->setText(text_);
    std::cout << "copied at " << std::fixed << secondsNow() << std::endl;
    setWindowTitle(QStringLiteral("Qt 6 field, copied %1").arg(++copies_));
  }

 private:
  const QString text_;
  const unsigned long busyMs_;
  int copies_ = 0;
};

std::unique_ptr<QWidget> passwordField(const QString& text) {
  auto field = std::make_unique<QLineEdit>(text);
  field->setEchoMode(QLineEdit::Password);
  field->setWindowTitle(QStringLiteral("Password field"));
  QObject::connect(field.get(), &QLineEdit::selectionChanged, field.get(), [f = field.get()] {
    const bool whole = f->selectedText().size() == f->text().size();
    f->setWindowTitle(whole ? QStringLiteral("Password field, all selected")
                            : QStringLiteral("Password field"));
  });
  return field;
}

std::unique_ptr<QWidget> field(const QString& text, const QString& kind, const QString& busyMs) {
  if (kind == QLatin1String("--password"))
    return passwordField(text);
  std::unique_ptr<QWidget> window;
  if (kind == QLatin1String("--bare"))
    window = std::make_unique<BareText>(text, busyMs.toULong());
  else
    window = std::make_unique<QPlainTextEdit>(text);
  window->setWindowTitle(QStringLiteral("Qt 6 field"));
  return window;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const std::unique_ptr<QWidget> window =
      field(arguments.value(1), arguments.value(2), arguments.value(3));
  window->resize(500, 300);
  window->show();
  return QApplication::exec();
}
