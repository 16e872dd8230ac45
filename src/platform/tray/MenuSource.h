#pragma once

#include <QObject>
#include <functional>

#include "platform/Menu.h"
#include "platform/windowlink/Messages.h"

namespace tavin::tray {

// The menu as every drawer of it uses it: filled before an opening, asked to act on a choice.
// Main thread only.
class MenuSource : private QObject {
 public:
  // `commandChosen` is called right before each command is carried out.
  explicit MenuSource(std::function<void()> commandChosen);

  void setMenu(Menu* menu) { menu_ = menu; }  // Not owned.
  // Fills the menu for an opening, which may take as long as the delegate does. Null without one.
  const Menu* refresh();
  // The same where nobody opens it.
  const Menu* measure();
  // Carries out the command of an item as it was drawn, from the event loop: what drew the menu is
  // done with it by then, and whoever waits for an answer has got it.
  void choose(const MenuItem& item);

 private:
  std::function<void()> commandChosen_;
  Menu* menu_ = nullptr;
};

// The title as it is drawn: where lines run from right to left, the signs of a shortcut, "⌥ Esc",
// keep their order all the same.
QString drawnTitle(const QString& title);

// How an item shows its state.
using windowlink::Toggle;
Toggle toggleOf(const MenuItem& item);

}  // namespace tavin::tray
