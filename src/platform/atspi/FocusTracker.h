#pragma once

#include <memory>
#include <utility>

#include "platform/atspi/Bus.h"
#include "platform/atspi/Focus.h"

namespace tavin::atspi {

// Looks up what has the keyboard, and remembers the last answer for the decision whether keys may
// be sent there. Work queue only.
class FocusTracker {
 public:
  explicit FocusTracker(std::unique_ptr<WindowSystem> windows) : windows_(std::move(windows)) {}

  // Bounded by 0.6 s and the wait for a menu to close.
  Focus look();
  // Whether the program in front may get the keys that copy: no terminal, no password field, no
  // program that knows no such keys.
  bool mayReceiveCopy();

  Bus& bus() { return bus_; }
  WindowSystem& windows() { return *windows_; }

 private:
  Focus lookInto(const FrontWindow& window);
  Focus waitForProgram(FrontWindow window);
  void identify(FrontWindow& window, const ObjectRef& program, Deadline deadline);
  bool isOwn(const ObjectRef& program);
  bool showsNoText(const FocusSearch& search, Deadline deadline);

  Bus bus_;
  const std::unique_ptr<WindowSystem> windows_;
  Focus last_;
  Deadline lastIsFresh_ = Deadline::in(0);
};

}  // namespace tavin::atspi
