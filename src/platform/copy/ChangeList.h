#pragma once

#include <mutex>
#include <utility>
#include <vector>

#include "platform/copy/WatchedPasteboard.h"

namespace tavin::copy {

// The changes that a desktop's thread has seen and nobody has taken yet. Any thread: whoever does
// not wait for that thread any longer loses none.
class ChangeList {
 public:
  void add(const ClipboardChange& change) {
    const std::lock_guard lock(mutex_);
    changes_.push_back(change);
  }
  std::vector<ClipboardChange> take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(changes_, {});
  }
  // As in UserInput.
  void explainBy(UserInput::Time arrival, UserInput::Time end) {
    const std::lock_guard lock(mutex_);
    for (auto& change : changes_) change.input.explainBy(arrival, end);
  }

 private:
  std::mutex mutex_;
  std::vector<ClipboardChange> changes_;
};

}  // namespace tavin::copy
