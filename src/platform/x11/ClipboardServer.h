#pragma once

#include <xcb/xfixes.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/TaskInbox.h"
#include "platform/x11/ClipboardAnswers.h"
#include "platform/x11/ClipboardWatch.h"

namespace tavin::x11 {

// Owns the clipboard for us and serves what we put there at any moment, whatever the rest of the
// program is doing: by one thread with its own connection, asleep in poll. Any thread may call;
// every call is bounded in time.
class ClipboardServer {
 public:
  // Null without a display or its XFixes extension.
  // `transferIdleSeconds`: when a program that takes no more of a large transfer is given up.
  static std::unique_ptr<ClipboardServer> create(double transferIdleSeconds = 10);
  // Ends the thread; what it served is gone.
  ~ClipboardServer();

  // The number of times that any program took or cleared the clipboard since the start. Exact: it
  // holds everything that happened before the call, or is the last one known where the display
  // does not answer.
  std::int64_t changeCount();
  void serve(ClipboardContents contents);
  void clear();
  // As in copy::WatchedPasteboard; `onChange` is called on the thread.
  void beginWatch(std::function<void()> onChange);
  void endWatch();
  std::vector<copy::ClipboardChange> takeChanges();
  void shortcutArrived(copy::UserInput::Time time);
  // Asks the session's clipboard manager to keep what we serve. One that has not answered by
  // `answerDue` is taken for one that never does and keeps what it reads by itself: it is told of
  // our contents anew, and waited for until it has read them. False where there is none, or it has
  // not said before `deadline` that it took everything; true also when there is nothing to keep.
  bool handOver(Deadline answerDue, Deadline deadline);

 private:
  ClipboardServer(std::unique_ptr<Connection> connection, std::uint8_t fixesEvent,
                  double transferIdleSeconds);
  // Runs `task` on the thread and waits for it; false when it did not run to its end in time.
  bool perform(Deadline deadline, std::function<void()> task);

  // The thread's own, all below.
  void run();
  int pollTimeout();
  void handleQueuedEvents();
  void handle(const xcb_generic_event_t& event);
  void loseOwnership();
  void synchronise();
  xcb_timestamp_t serverTime();
  bool claim(ClipboardContents contents);
  bool isOwnDoing(const xcb_xfixes_selection_notify_event_t& notice) const;
  void giveUpIfDue(bool now);
  void continueHandOver();
  std::optional<Deadline> nextHandOverStep();
  bool tellAnew();
  void endHandOver(bool kept);

  const std::unique_ptr<Connection> connection_;
  const std::uint8_t fixesEvent_;
  const xcb_window_t window_;
  const xcb_atom_t clipboard_, manager_, saveTargets_, kept_, clock_;
  ClipboardAnswers answers_;
  ClipboardWatch watch_;
  bool owning_ = false;
  std::atomic<std::int64_t> changes_ = 0;
  xcb_timestamp_t claimedAt_ = XCB_CURRENT_TIME;
  std::optional<Deadline> giveUpAt_;
  struct HandOver {
    xcb_window_t manager;
    Deadline answerDue, deadline;
    std::function<void(bool)> onEnd;
    bool toldAnew = false;
  };
  std::optional<HandOver> handOver_;

  posix::TaskInbox inbox_;
  std::thread thread_;
};

}  // namespace tavin::x11
