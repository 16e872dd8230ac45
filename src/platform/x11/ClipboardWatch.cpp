#include "platform/x11/ClipboardWatch.h"

#include <algorithm>
#include <utility>

#include "platform/x11/HotkeyMapping.h"
#include "platform/x11/WindowProperties.h"

namespace tavin::x11 {
namespace {

// A wheel turns by presses of these.
constexpr std::uint32_t firstOfWheel = 4;
constexpr std::uint32_t lastOfWheel = 7;
// A display on this machine tells its time by the same clock; most others by one that differs by
// hours or days.
constexpr std::chrono::seconds sameClock(10);

// The display counts milliseconds, and begins at 0 again after 49 days.
std::chrono::milliseconds between(xcb_timestamp_t time, ClipboardWatch::Time now) {
  const auto counted =
      std::chrono::floor<std::chrono::milliseconds>(now.time_since_epoch()).count();
  return std::chrono::milliseconds(
      static_cast<std::int32_t>(static_cast<xcb_timestamp_t>(counted) - time));
}

}  // namespace

void ClipboardWatch::begin(std::function<void()> onChange, xcb_timestamp_t serverTime) {
  if (!tellsInput_)
    tellsInput_ = input_.prepare();
  if (*tellsInput_)
    input_.select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
  on_ = State{.onChange = std::move(onChange),
              .sharesClock =
                  std::chrono::abs(between(serverTime, copy::UserInput::Clock::now())) < sameClock,
              .target = activeWindow_.keyTarget(),
              .input = *tellsInput_ ? copy::UserInput() : copy::UserInput::unknown()};
  changes_.take();
}

void ClipboardWatch::end() {
  if (on_ && *tellsInput_)
    input_.select(0);
  on_.reset();
  changes_.take();
}

void ClipboardWatch::shortcutArrived(Time time) {
  if (!on_)
    return;
  on_->input.explainBy(time, time);
  changes_.explainBy(time, time);
}

void ClipboardWatch::ownerChanged(xcb_window_t owner) {
  if (!on_)
    return;
  changes_.add({.fromTarget = isTargets(owner), .input = on_->input});
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
  const auto* raw = on_ ? input_.in(event) : nullptr;
  if (!raw || !isForACopy(*raw))
    return;
  const Time time = timeOf(raw->time);
  on_->input.note(time);
  // What no shortcut can explain any more is enough: who types would wake this thread all the time.
  if (!on_->input.mayBeExplained(time - copy::shortcutsEnd))
    input_.select(0);
}

bool ClipboardWatch::isForACopy(const xcb_input_raw_key_press_event_t& raw) const {
  if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
    return raw.detail < firstOfWheel || raw.detail > lastOfWheel;
  return raw.event_type == XCB_INPUT_RAW_KEY_PRESS && !copiesNothing(raw.detail);
}

bool ClipboardWatch::copiesNothing(std::uint32_t key) const {
  using Key = shortcuts::KeyCombination::Key;
  const auto mapping = HotkeyMapping::read(connection_);
  for (const Key each : {Key::escape, Key::ansiR}) {
    if (std::ranges::count(mapping.keycodes(each), key) != 0)
      return true;
  }
  xcb_connection_t* c = connection_.get();
  const Reply<xcb_get_modifier_mapping_reply_t> keys(
      xcb_get_modifier_mapping_reply(c, xcb_get_modifier_mapping(c), nullptr));
  if (!keys)
    return false;
  const auto* first = xcb_get_modifier_mapping_keycodes(keys.get());
  const auto* end = first + xcb_get_modifier_mapping_keycodes_length(keys.get());
  return std::find(first, end, key) != end;
}

// By the display's clock, because this thread may hear of it later than others of the shortcut.
ClipboardWatch::Time ClipboardWatch::timeOf(xcb_timestamp_t time) const {
  const auto now = copy::UserInput::Clock::now();
  return on_->sharesClock ? std::chrono::floor<std::chrono::milliseconds>(now) - between(time, now)
                          : now;
}

}  // namespace tavin::x11
