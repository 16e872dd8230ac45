#pragma once

#include <functional>
#include <optional>

#include "platform/copy/WatchedPasteboard.h"
#include "platform/x11/ActiveWindow.h"
#include "platform/x11/RawEvents.h"

namespace tavin::x11 {

// Tells whose the clipboard's changes are: by the owner's client, and by the keys and buttons that
// were pressed. One connection brings both in their true order. The thread of its connection alone.
class ClipboardWatch {
 public:
  // `connection` must outlive it.
  explicit ClipboardWatch(const Connection& connection)
      : connection_(connection), activeWindow_(connection), input_(connection) {}

  // As in copy::WatchedPasteboard.
  void begin(std::function<void()> onChange);
  void end();
  copy::ClipboardChanges changes() const { return on_ ? on_->changes : copy::ClipboardChanges(); }

  // The clipboard has a new owner.
  void ownerChanged(xcb_window_t owner);
  // Any event; takes notice of those of keys and buttons.
  void observe(const xcb_generic_event_t& event);

 private:
  struct State {
    std::function<void()> onChange;
    xcb_window_t target = XCB_WINDOW_NONE;
    bool acted = false;
    copy::ClipboardChanges changes;
  };
  bool isTargets(xcb_window_t owner) const;

  const Connection& connection_;
  const ActiveWindow activeWindow_;
  RawEvents input_;
  std::optional<bool> tellsInput_;  // None until it is asked.
  std::optional<State> on_;
};

}  // namespace tavin::x11
