#pragma once

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// Finds the window that has the keyboard. One thread.
class ActiveWindow {
 public:
  // `connection` must outlive it.
  explicit ActiveWindow(const Connection& connection);

  // What the window manager calls active; without one, the window that has the input focus or the
  // one of its ancestors that the program set up. XCB_WINDOW_NONE where there is none.
  xcb_window_t find() const;
  // The window that keys go to: the one with the input focus, or the one inside it that the pointer
  // is over, as the X server does. It may be another program's, shown inside the active one.
  xcb_window_t keyTarget() const;
  // The window itself, or the one of its ancestors that the program set up.
  xcb_window_t setUpBy(xcb_window_t window) const;
  // Whether it is a panel, a menu or the like, or belongs to this process: something that has the
  // keyboard for a moment only.
  bool isPassing(xcb_window_t window) const;
  // Whether another client holds the keyboard, as an open menu or a screen lock does.
  bool keyboardIsGrabbed() const;

 private:
  xcb_window_t inputFocus() const;
  xcb_window_t focused() const;
  xcb_window_t childUnderPointer(xcb_window_t window) const;

  const Connection& connection_;
  xcb_window_t probe_;
  xcb_atom_t activeWindow_, managerWindow_, windowType_;
  xcb_atom_t passingTypes_[5];
};

}  // namespace tavin::x11
