#pragma once

#include <atomic>
#include <chrono>

namespace tavin::atspi {

// That a command was chosen in the tray menu, which has perhaps not closed yet. Most commands read
// no selection, so it is forgotten after a while. Any thread.
class MenuNotice {
 public:
  void note() { noted_ = Clock::now(); }
  // Whether it was noted lately; once for each note.
  bool take() {
    const auto noted = noted_.exchange(Clock::time_point());
    return noted != Clock::time_point() && Clock::now() - noted < memory;
  }

 private:
  using Clock = std::chrono::steady_clock;
  // Longer than any menu takes to close.
  static constexpr auto memory = std::chrono::seconds(2);

  std::atomic<Clock::time_point> noted_ = Clock::time_point();
};

}  // namespace tavin::atspi
