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

void ClipboardWatch::changed() {
  if (!on_)
    return;
  auto& changes = on_->changes;
  if (++changes.count == 1)
    changes.fromTarget = front() == on_->target;
  changes.userActed = input_.acted();
  on_->onChange();
}

}  // namespace tavin::wayland
