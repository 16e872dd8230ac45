#include "platform/wayland/ClipboardWatch.h"

#include <utility>

namespace tavin::wayland {

void ClipboardWatch::begin(std::function<void()> onChange) {
  on_ = State{std::move(onChange), front()};
  changes_.take();
  input_.begin();
}

void ClipboardWatch::end() {
  on_.reset();
  changes_.take();
  input_.end();
}

void ClipboardWatch::shortcutArrived(copy::UserInput::Time time) {
  if (!on_)
    return;
  input_.shortcutArrived(time);
  changes_.explainBy(time, time + copy::shortcutsEnd);
}

void ClipboardWatch::changed() {
  if (!on_)
    return;
  changes_.add({.fromTarget = front() == on_->target, .input = input_.input()});
  on_->onChange();
}

}  // namespace tavin::wayland
