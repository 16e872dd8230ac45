#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// What the main thread needs to hear of the display: that it has ended, and whether there is an
// old-style tray (XEmbed). Main thread only; asleep until either changes.
class DisplayWatch {
 public:
  // Null where there is no display. `ended` is called once, from the event loop.
  static std::unique_ptr<DisplayWatch> create(std::function<void()> ended);

  bool hasTray() const { return hasTray_; }
  // Called from the event loop at each change; nothing is called any more without a function.
  void onTrayChange(std::function<void()> changed) { trayChanged_ = std::move(changed); }

 private:
  DisplayWatch(std::unique_ptr<Connection> connection, std::function<void()> ended);
  void readEvents();
  void handle(const xcb_generic_event_t& event);

  const std::unique_ptr<Connection> connection_;
  const std::function<void()> ended_;
  const xcb_atom_t tray_;
  const std::optional<std::uint8_t> notices_;
  bool hasTray_ = false;
  std::function<void()> trayChanged_;
  QSocketNotifier notifier_;
};

}  // namespace tavin::x11
