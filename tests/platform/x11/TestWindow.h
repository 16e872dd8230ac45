#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include "platform/x11/Connection.h"

namespace tavin::test {

// Another program with one window; see test_window.cpp for what it can do.
class TestWindow {
 public:
  explicit TestWindow(const QString& className, const QString& type = {});
  ~TestWindow();
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  xcb_window_t id() const { return id_; }
  qint64 processId() const { return process_.processId(); }
  // True when it has done it.
  bool command(const QByteArray& line);
  // The next `count` keys that reached the window; fewer when they do not come.
  QStringList keys(int count);

 private:
  QString nextLine();

  QProcess process_;
  xcb_window_t id_ = XCB_WINDOW_NONE;
  QStringList keys_;
};

// Says, in the window manager's place, which window is active, and gives it the keyboard. Only for
// a display without a window manager.
void activate(const x11::Connection& connection, xcb_window_t window);

}  // namespace tavin::test
