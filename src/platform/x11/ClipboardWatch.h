#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/copy/ChangeList.h"
#include "platform/x11/ActiveWindow.h"
#include "platform/x11/RawEvents.h"

namespace tavin::x11 {

// Tells whose the clipboard's changes are: by the owner's client, and by the keys and buttons that
// were pressed, but for modifiers and the keys of our own shortcuts, which copy nothing. One
// connection brings both in their true order. The thread of its connection alone.
class ClipboardWatch {
 public:
  using Time = copy::UserInput::Time;

  // `connection` must outlive it.
  explicit ClipboardWatch(const Connection& connection)
      : connection_(connection), activeWindow_(connection), input_(connection) {}

  // As in copy::WatchedPasteboard. `serverTime` is now, by the display's clock.
  void begin(std::function<void()> onChange, xcb_timestamp_t serverTime);
  void end();
  // Any thread.
  std::vector<copy::ClipboardChange> takeChanges() { return changes_.take(); }
  void shortcutArrived(Time time);

  // The clipboard has a new owner, which is not ourselves.
  void ownerChanged(xcb_window_t owner);
  // Any event; takes notice of those of keys and buttons.
  void observe(const xcb_generic_event_t& event);

 private:
  struct State {
    std::function<void()> onChange;
    bool sharesClock = false;  // With the display.
    xcb_window_t target = XCB_WINDOW_NONE;
    copy::UserInput input;
  };
  bool isTargets(xcb_window_t owner) const;
  bool isForACopy(const xcb_input_raw_key_press_event_t& raw) const;
  bool copiesNothing(std::uint32_t key) const;
  Time timeOf(xcb_timestamp_t time) const;

  const Connection& connection_;
  const ActiveWindow activeWindow_;
  RawEvents input_;
  std::optional<bool> tellsInput_;  // None until it is asked.
  std::optional<State> on_;
  copy::ChangeList changes_;
};

}  // namespace tavin::x11
