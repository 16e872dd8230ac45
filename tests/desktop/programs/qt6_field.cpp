// A window with an editable text, given as the first argument. With "--bare" as the second, a
// widget that accessibility does not see into, that never owns the selection and copies on
// Ctrl+Insert alone.
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>

namespace {

class BareText : public QWidget {
 public:
  explicit BareText(QString text) : text_(std::move(text)) { setFocusPolicy(Qt::StrongFocus); }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).drawText(rect(), text_); }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::ControlModifier)
      QGuiApplication::clipboard()->setText(text_);
  }

 private:
  QString text_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const QString text = arguments.value(1);
  std::unique_ptr<QWidget> window;
  if (arguments.value(2) == QLatin1String("--bare"))
    window = std::make_unique<BareText>(text);
  else
    window = std::make_unique<QPlainTextEdit>(text);
  window->setWindowTitle(QStringLiteral("Qt 6 field"));
  window->resize(500, 300);
  window->show();
  return QApplication::exec();
}
