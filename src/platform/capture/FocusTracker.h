#pragma once

#include <memory>
#include <utility>

#include "platform/atspi/Bus.h"
#include "platform/capture/Focus.h"

namespace tavin::capture {

// Looks up what has the keyboard, and remembers the last answer for the decision whether keys may
// be sent there. Work queue only.
class FocusTracker {
 public:
  // `bus` is the session's, which tells where the accessibility bus is.
  FocusTracker(std::unique_ptr<windows::WindowSystem> windows, const QDBusConnection& bus)
      : bus_(bus), windows_(std::move(windows)) {}

  // Bounded by 0.6 s and the wait for a menu to close.
  Focus look();
  // Whether the program in front may get the keys that copy: no terminal, no password field, no
  // program that knows no such keys.
  bool mayReceiveCopy();

  atspi::Bus& bus() { return bus_; }
  windows::WindowSystem& windows() { return *windows_; }

 private:
  Focus lookInto(const windows::FrontWindow& window);
  Focus waitForProgram(windows::FrontWindow window);
  void identify(windows::FrontWindow& window, const atspi::ObjectRef& program, Deadline deadline);
  bool isOwn(const atspi::ObjectRef& program);
  bool showsNoText(const atspi::FocusSearch& search, Deadline deadline);

  atspi::Bus bus_;
  const std::unique_ptr<windows::WindowSystem> windows_;
  Focus last_;
  Deadline lastIsFresh_ = Deadline::in(0);
};

}  // namespace tavin::capture
