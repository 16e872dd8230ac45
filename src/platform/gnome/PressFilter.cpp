#include "platform/gnome/PressFilter.h"

namespace tavin::gnome {
namespace {

using std::chrono::milliseconds;

// The longest that a keyboard waits before it repeats, and more: later runs without any input come
// from a program.
constexpr milliseconds longestDelay(2500);
// Commands that were started while the key was held may arrive after its release.
constexpr milliseconds stragglers(400);

}  // namespace

bool PressFilter::isSurelyPress(Clock::time_point now) {
  const auto latest = repetition_ ? repetition_ : press_ ? std::optional(press_->at) : std::nullopt;
  if (latest && now - *latest < longestDelay)
    return false;
  press_ = Press{now, {now, now}};
  repetition_.reset();
  return true;
}

void PressFilter::refine(Clock::time_point press, InputTime last) {
  if (press_ && press_->at == press)
    press_->input = last;
}

bool PressFilter::isPress(Clock::time_point now, InputTime last) {
  const bool sameInput = press_ && last.earliest <= press_->input.latest &&
                         now - repetition_.value_or(press_->at) < longestDelay;
  const bool straggles = repetition_ && now - *repetition_ < stragglers;
  if (sameInput || straggles) {
    repetition_ = now;
    return false;
  }
  press_ = Press{now, last};
  repetition_.reset();
  return true;
}

}  // namespace tavin::gnome
