#include "platform/x11/ClipboardWatch.h"

#include <utility>

#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {
namespace {

// A wheel turns by presses of these.
constexpr std::uint32_t firstOfWheel = 4;
constexpr std::uint32_t lastOfWheel = 7;

}  // namespace

void ClipboardWatch::begin(std::function<void()> onChange) {
  if (!tellsInput_)
    tellsInput_ = input_.prepare();
  if (*tellsInput_)
    input_.select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
  on_ = State{std::move(onChange), activeWindow_.keyTarget(), !*tellsInput_, {}};
}

void ClipboardWatch::end() {
  if (on_ && *tellsInput_)
    input_.select(0);
  on_.reset();
}

void ClipboardWatch::ownerChanged(xcb_window_t owner) {
  if (!on_)
    return;
  auto& changes = on_->changes;
  if (++changes.count == 1)
    changes.fromTarget = isTargets(owner);
  changes.userActed = on_->acted;
  on_->onChange();
}

bool ClipboardWatch::isTargets(xcb_window_t owner) const {
  if (owner == XCB_WINDOW_NONE || on_->target == XCB_WINDOW_NONE)
    return false;
  const auto process = clientProcess(connection_, owner);
  return sameClient(connection_, owner, on_->target) ||
         (process != 0 && process == clientProcess(connection_, on_->target));
}

void ClipboardWatch::observe(const xcb_generic_event_t& event) {
  const auto* raw = on_ && !on_->acted ? input_.in(event) : nullptr;
  if (!raw)
    return;
  const bool wheel = raw->detail >= firstOfWheel && raw->detail <= lastOfWheel;
  on_->acted = raw->event_type == XCB_INPUT_RAW_KEY_PRESS ||
               (raw->event_type == XCB_INPUT_RAW_BUTTON_PRESS && !wheel);
  // Once is enough: who types would wake this thread all the time.
  if (on_->acted)
    input_.select(0);
}

}  // namespace tavin::x11
