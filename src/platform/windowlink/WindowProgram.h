#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/ProcessLauncher.h"
#include "platform/SystemLog.h"
#include "platform/windowlink/Channel.h"
#include "platform/windowlink/Messages.h"

namespace tavin::windowlink {

// The program that shows Tavin's alerts, its own menu and its icon in an old-style tray, so that no
// library for windows and no plug-in of a theme is in Tavin itself. It is started when one of them
// is to be shown and ended soon after the last.
//
// It may crash, be killed, hang or talk nonsense at any time. Then it is killed, what it showed
// counts as closed by the user, a line in the log says so, and what is shown next starts another.
// An alert that it got and never answered for is shown once more, by the next. It is asked now and
// then whether it still answers while it has an alert or a menu open, and not while it has the icon
// alone. Main thread only; waits for nothing. Callbacks run from the event
// loop and may ask for the next thing.
class WindowProgram : private QObject {
 public:
  struct Place {
    QString executable;
    QString qtPlatform;         // Qt's windowing plug-in.
    int patienceMs = 15'000;    // How long an answer may take.
    int restartMs = 2000;       // From its end to the next start for the icon alone.
    int menuPatienceMs = 3000;  // While it has the keyboard for a menu, an answer.
  };

  // `launcher` and `log` must outlive it. Destroying it ends the program and calls nothing.
  WindowProgram(ProcessLauncher& launcher, SystemLog& log, Place place);
  ~WindowProgram() override;

  // One at a time. `answered` is told an answer without a button where the program ended first.
  void showAlert(const Alert& alert, bool inFront, std::function<void(AlertResponse)> answered);
  void bringAlertToFront();
  void closeAlert();  // `answered` is not called any more.

  // One at a time. `closed` is told the number of the command that was chosen, if one was.
  void showMenu(std::optional<QPoint> position, std::vector<MenuLine> lines,
                std::function<void(std::optional<quint32>)> closed);
  void closeMenu();  // `closed` is not called any more.

  // Shown again where the program had to be started again, five times in a row.
  void showIcon(const QString& symbol, const QString& toolTip, std::function<void()> clicked);
  void hideIcon();

 private:
  bool isNeeded() const { return isWatched() || clicked_; }
  bool isWatched() const { return answered_ || closed_; }
  void send(const Request& request);
  int patience() const;
  // Why that failed, where it did.
  std::optional<QString> start();
  void received(const QByteArray& message);
  void handle(const Pong&);
  void handle(const Finished&);
  void handle(const AlertAnswered& answer);
  void handle(const MenuClosed& answer);
  void handle(const IconClicked&);
  void ping();
  void rest();
  void timeIsOver();
  void lose(const QString& how);
  void end();
  void restartForIcon();

  ProcessLauncher& launcher_;
  SystemLog& log_;
  const Place place_;
  // Its file as it was when Tavin started: one that an upgrade brings may speak otherwise.
  posix::FileDescriptor file_;
  std::shared_ptr<ChildProcess> process_;
  std::unique_ptr<Channel> channel_;  // While the program runs.
  QTimer timer_;                      // To the end of patience, the next question, or the end.
  bool asked_ = false;                // And not answered.
  bool answers_ = false;              // Has answered since its start.
  bool finishing_ = false;            // Was told that nothing is to be shown any more.
  std::vector<Request> unsent_;       // Where it could not be started.
  std::optional<ShowAlert> unseen_;   // Sent, and nothing answered since.
  quint32 alertId_ = 0;
  quint32 menuId_ = 0;
  std::function<void(AlertResponse)> answered_;         // While an alert is open.
  std::function<void(std::optional<quint32>)> closed_;  // While the menu is.
  std::function<void()> clicked_;                       // While there is an icon.
  ShowIcon icon_;
  QElapsedTimer started_;
  int restarts_ = 0;
};

}  // namespace tavin::windowlink
