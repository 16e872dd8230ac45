#include "platform/x11/TestWindow.h"

namespace tavin::test {
namespace {

constexpr int kPatience = 10'000;

}  // namespace

TestWindow::TestWindow(const QString& className, const QString& type) {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(TEST_WINDOW_PROGRAM,
                 QStringList{className} + (type.isEmpty() ? QStringList{} : QStringList{type}));
  id_ = nextLine().toUInt();
}

TestWindow::~TestWindow() {
  process_.closeWriteChannel();
  process_.waitForFinished(kPatience);
}

QString TestWindow::nextLine() {
  while (!process_.canReadLine()) {
    if (!process_.waitForReadyRead(kPatience))
      return {};
  }
  return QString::fromUtf8(process_.readLine()).trimmed();
}

bool TestWindow::command(const QByteArray& line) {
  process_.write(line + '\n');
  while (true) {
    const QString answer = nextLine();
    if (answer.startsWith("press") || answer.startsWith("release"))
      keys_ << answer;
    else
      return answer == "done";
  }
}

QStringList TestWindow::keys(int count) {
  while (keys_.size() < count) {
    const QString line = nextLine();
    if (line.isEmpty())
      break;
    keys_ << line;
  }
  QStringList result = keys_.mid(0, count);
  keys_ = keys_.mid(result.size());
  return result;
}

void activate(const x11::Connection& connection, xcb_window_t window) {
  xcb_connection_t* c = connection.get();
  xcb_change_property(c, XCB_PROP_MODE_REPLACE, connection.root(),
                      connection.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &window);
  if (window != XCB_WINDOW_NONE)
    xcb_set_input_focus(c, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  connection.atom("a round trip");
}

}  // namespace tavin::test
