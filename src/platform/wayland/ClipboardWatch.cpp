#include "platform/wayland/ClipboardWatch.h"

#include <utility>

namespace tavin::wayland {

void ClipboardWatch::begin(std::function<void()> onChange) {
  on_ = State{std::move(onChange), front(), {}};
  input_.begin();
}

void ClipboardWatch::end() {
  on_.reset();
  input_.end();
}

std::vector<copy::ClipboardChange> ClipboardWatch::takeChanges() {
  return on_ ? std::exchange(on_->changes, {}) : std::vector<copy::ClipboardChange>();
}

void ClipboardWatch::shortcutArrived(copy::Input::Time time) {
  if (!on_)
    return;
  input_.shortcutArrived(time);
  for (auto& change : on_->changes) change.input.explainBy(time, time + copy::shortcutsEnd);
}

void ClipboardWatch::changed() {
  if (!on_)
    return;
  on_->changes.push_back({.fromTarget = front() == on_->target, .input = input_.input()});
  on_->onChange();
}

}  // namespace tavin::wayland
