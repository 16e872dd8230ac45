#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/wayland/ClipboardWatch.h"
#include "platform/wayland/DataControl.h"
#include "platform/wayland/EventThread.h"
#include "platform/wayland/PipeWriters.h"

namespace tavin::wayland {

// Owns the clipboard for us and serves what we put there at any moment, whatever the rest of the
// program is doing: on the thread of its connection. Any other thread may call the public
// functions; each is bounded in time.
class ClipboardServer {
 public:
  // All must outlive it; `windows` is null where nothing is told of them. `transferIdleSeconds`:
  // when a program that takes no more of a transfer is given up.
  ClipboardServer(EventThread& thread, Connection& connection, DataControl& control,
                  const WindowWatch* windows, double transferIdleSeconds);
  ~ClipboardServer();

  // The number of times that any program took or cleared the clipboard since the start. Exact: it
  // holds everything that happened before the call, or is the last one known where the compositor
  // does not answer.
  std::int64_t changeCount();
  void serve(PasteboardItem item);
  void clear();
  // Does at once what the last call of that has left for a moment later.
  void clearNow(Deadline deadline);
  // As in copy::WatchedPasteboard; `onChange` is called on the thread.
  void beginWatch(std::function<void()> onChange);
  void endWatch();
  std::vector<copy::ClipboardChange> takeChanges();
  void shortcutArrived(copy::UserInput::Time time);

  // To be called on the thread: after each change; for what it waits for; and then, to do what can
  // be done now, which waits for nobody but the compositor.
  void noteChange();
  void addFiles(std::vector<pollfd>& files) { writers_.addFiles(files); }
  std::optional<Deadline> nextDeadline();
  void proceed();

 private:
  struct Served;

  void claim(PasteboardItem item);
  void clearIfDue(bool now);
  void change(zwlr_data_control_source_v1* source);

  EventThread& thread_;
  Connection& connection_;
  DataControl& control_;
  PipeWriters writers_;
  ClipboardWatch watch_;
  std::unique_ptr<Served> served_;  // Null while others own the clipboard.
  std::optional<Deadline> clearAt_;
  std::int64_t changesBeforeClear_ = 0;
  bool changing_ = false;            // Ourselves.
  std::int64_t lastKnownCount_ = 0;  // Of the calling thread.
};

}  // namespace tavin::wayland
