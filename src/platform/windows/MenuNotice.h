#pragma once

#include <atomic>
#include <chrono>

namespace tavin::windows {

// That a command was chosen in the tray menu, which has perhaps not closed yet. Most commands read
// no selection, so it is forgotten after a while. Any thread.
class MenuNotice {
 public:
  using Clock = std::chrono::steady_clock;

  void note(Clock::time_point now = Clock::now()) { noted_ = now; }
  // Whether it was noted lately; once for each note.
  bool take(Clock::time_point now = Clock::now()) {
    const auto noted = noted_.exchange(Clock::time_point());
    return noted != Clock::time_point() && now - noted < memory;
  }

 private:
  // Longer than any menu takes to close.
  static constexpr auto memory = std::chrono::seconds(2);

  std::atomic<Clock::time_point> noted_ = Clock::time_point();
};

}  // namespace tavin::windows
