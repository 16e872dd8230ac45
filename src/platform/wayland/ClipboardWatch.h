#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/copy/ChangeList.h"
#include "platform/wayland/InputWatch.h"
#include "platform/wayland/WindowWatch.h"

namespace tavin::wayland {

// Tells whose the clipboard's changes are. On Wayland it has no owner, so the program counts that
// was in front: of those that show windows, no other may change it. The thread of its connection
// alone.
class ClipboardWatch {
 public:
  // `connection` and `windows` must outlive it; `windows` is null where nothing is told of them.
  ClipboardWatch(Connection& connection, const WindowWatch* windows)
      : windows_(windows), input_(connection) {}

  // As in copy::WatchedPasteboard.
  void begin(std::function<void()> onChange);
  void end();
  // Any thread.
  std::vector<copy::ClipboardChange> takeChanges() { return changes_.take(); }
  void shortcutArrived(copy::UserInput::Time time);

  // To be called after each change of the clipboard that is not our own.
  void changed();

 private:
  struct State {
    std::function<void()> onChange;
    std::uint64_t target = 0;
  };
  // 0 where nothing is told.
  std::uint64_t front() const { return windows_ ? windows_->active().id : 0; }

  const WindowWatch* const windows_;
  InputWatch input_;
  std::optional<State> on_;
  copy::ChangeList changes_;
};

}  // namespace tavin::wayland
