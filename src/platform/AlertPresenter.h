#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace tavin {

struct Alert {
  QString messageText;
  QString informativeText;
  QStringList buttons;       // The first is the default; none gives the platform's single one.
  bool secureField = false;  // A masked, empty text field that has the keyboard.
};

struct AlertResponse {
  static constexpr int firstButton = 1000;
  int button = 0;  // firstButton + the index of the chosen button; 0 when closed in another way.
  QString text;    // The secure field's text, exactly as typed.
};

// Shows alerts one after the other, in the order in which they were asked for; a later one waits
// until those before it are dismissed. All texts are plain text, shown in full. Main thread only.
class AlertPresenter {
 public:
  virtual ~AlertPresenter() = default;
  // The next alert opens in front of whatever program is active and takes the keyboard; where one
  // is open already, that one does so at once.
  virtual void activateIgnoringOtherApps() = 0;
  // Returns at once: timers, shortcuts and the menu go on while an alert is open. `completion` runs
  // on the main thread when the user has answered; not at all when the program quits first.
  virtual void runModal(const Alert& alert, std::function<void(AlertResponse)> completion) = 0;
};

}  // namespace tavin
