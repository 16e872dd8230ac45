#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace tavin::copy {

// From the first key of a shortcut's press, which may be a modifier, to its arrival; for a later
// one nobody waits. What the user copies himself so soon before a press is taken for the press.
constexpr std::chrono::milliseconds shortcutsWay{1000};
// Where a desktop tells that there was input but not which, what comes so soon after a shortcut is
// the end of its press.
constexpr std::chrono::milliseconds shortcutsEnd{500};

// When the user pressed a key or a button that may have been for a copy.
class UserInput {
 public:
  using Clock = std::chrono::steady_clock;
  using Time = Clock::time_point;

  // It is not known when there was any: no shortcut explains it.
  static UserInput unknown() {
    UserInput input;
    input.note(Time::min());
    return input;
  }

  // None where there was none.
  std::optional<Time> first() const { return first_; }
  void note(Time time) {
    last_ = first_ ? std::max(last_, time) : time;
    first_ = std::min(first_.value_or(time), time);
  }
  // A shortcut arrived, whose press may last until `end`. Only where nothing came before its keys
  // is all of it explained: the user selects before he copies.
  void explainBy(Time arrival, Time end) {
    if (!first_ || *first_ < arrival - shortcutsWay)
      return;
    first_ = last_ > end ? std::optional(last_) : std::nullopt;
  }
  // Whether a shortcut of whose arrival nothing is known yet may explain what there was.
  bool mayBeExplained(Time now) const { return first_ && *first_ > now - shortcutsWay; }

 private:
  std::optional<Time> first_;
  Time last_;
};

}  // namespace tavin::copy
