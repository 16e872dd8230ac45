#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/wayland/ClipboardServer.h"
#include "platform/wayland/SelectionReader.h"
#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

// What one connection to the compositor serves, put together, and the thread that serves it.
// Shared by the back ends of capture; any of them may outlive the others. One thread at a time,
// save clipboard() and reader().
class Compositor {
 public:
  // Null without a compositor that has data control.
  static std::shared_ptr<Compositor> connect(double transferIdleSeconds = 10);

  // To be called when the windows are looked at. Where the compositor has ended, connects to the
  // one in its place, if there is one by now: KWin is started again while programs live on. All
  // that is handed out below belongs to the connection and ends with it. Bounded by four seconds.
  void renew();

  // Any thread; they live as long as they are held. Never null.
  std::shared_ptr<ClipboardServer> clipboard();
  std::shared_ptr<SelectionReader> reader();
  // The protocol that brings the clipboard, for the log.
  const std::string& clipboardName() const { return line_->control->name(); }

  // Whether it tells which window is active.
  bool tellsWindows() const { return line_->windows != nullptr; }
  // The protocol that tells it, for the log.
  std::string windowsName() const { return line_->windows ? line_->windows->name() : "none"; }
  struct Front {
    Toplevel window;  // The active one.
    WindowWatch::PrimaryMaker primaryMaker;
    std::set<std::int64_t> processes;  // Of all windows, where it tells.
  };
  // Up to date. None where the compositor does not answer in time.
  std::optional<Front> front(Deadline deadline);

 private:
  // A connection, and what belongs to it.
  struct Line {
    static std::unique_ptr<Line> open(double transferIdleSeconds);
    Line(std::unique_ptr<Connection> opened, std::unique_ptr<DataControl> found,
         double transferIdleSeconds);
    ~Line() { thread.stop(); }

    const std::unique_ptr<Connection> connection;
    const std::unique_ptr<DataControl> control;
    const std::unique_ptr<WindowWatch> windows;
    EventThread thread;
    ClipboardServer clipboard;
    SelectionReader reader;
  };

  Compositor(std::shared_ptr<Line> line, double transferIdleSeconds)
      : transferIdleSeconds_(transferIdleSeconds), line_(std::move(line)) {}

  const double transferIdleSeconds_;
  std::mutex mutex_;            // Between those two and a new line.
  std::shared_ptr<Line> line_;  // Never null.
  Deadline nextTry_ = Deadline::in(0);
};

}  // namespace tavin::wayland
