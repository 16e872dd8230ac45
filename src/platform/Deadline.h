#pragma once

#include <algorithm>
#include <chrono>
#include <compare>

namespace tavin {

// The moment at which a wait is given up.
class Deadline {
 public:
  using Clock = std::chrono::steady_clock;

  static Deadline in(double seconds) {
    return Deadline(Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                       std::chrono::duration<double>(seconds)));
  }
  bool passed() const { return Clock::now() >= at_; }
  // Milliseconds left, rounded up, for poll() and its like; 0 when it has passed.
  int remainingMs() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(at_ - Clock::now()).count();
    return static_cast<int>(std::max<decltype(left)>(left, 0));
  }
  auto operator<=>(const Deadline&) const = default;  // NOLINT(modernize-use-nullptr)
  // This one, or `seconds` from now where that is sooner.
  Deadline orIn(double seconds) const { return Deadline(std::min(at_, in(seconds).at_)); }

 private:
  explicit Deadline(Clock::time_point at) : at_(at) {}

  Clock::time_point at_;
};

}  // namespace tavin
