#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <thread>

#include "platform/posix/TaskInbox.h"
#include "platform/x11/ActiveWindow.h"

namespace tavin::x11 {

// Remembers in which window the present PRIMARY selection was made, for as long as that window
// keeps the keyboard. One connection brings the changes of both in their true order. Its thread
// sleeps in poll and wakes only when the user selects something or goes to another window.
class PrimaryWatch {
 public:
  // Null without a display or its XFixes extension.
  static std::unique_ptr<PrimaryWatch> create();
  ~PrimaryWatch();

  // That window, or XCB_WINDOW_NONE. Any thread.
  std::uint32_t madeInWindow() const { return madeIn_; }

 private:
  PrimaryWatch(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent);
  using Event = Reply<xcb_generic_event_t>;

  void run();
  Event nextEvent();
  void handle(const xcb_generic_event_t& event);
  void primaryChanged(xcb_window_t owner);
  void activeWindowChanged();
  bool tellsActiveWindow(const xcb_generic_event_t& event) const;

  const std::unique_ptr<Connection> connection_;
  const std::uint8_t fixesEvent_;
  const ActiveWindow activeWindow_;
  const xcb_atom_t activeWindowAtom_;
  std::deque<Event> arrived_;  // Not handled yet.
  xcb_window_t current_ = XCB_WINDOW_NONE;
  bool currentIsOld_ = false;  // Another window has become the active one; it is not known which.
  std::atomic<std::uint32_t> madeIn_ = XCB_WINDOW_NONE;
  posix::TaskInbox inbox_;  // For its end alone.
  std::thread thread_;
};

}  // namespace tavin::x11
