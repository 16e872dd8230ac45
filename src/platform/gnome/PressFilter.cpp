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

bool PressFilter::isPress(Clock::time_point now, Input last) {
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
