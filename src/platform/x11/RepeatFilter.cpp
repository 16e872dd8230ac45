#include "platform/x11/RepeatFilter.h"

namespace tavin::x11 {
bool RepeatFilter::press(xcb_keycode_t key) {
  if (held_.empty())
    watchRawEvents(true);
  return held_.insert(key).second;
}

void RepeatFilter::observe(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_KEY_RELEASE)
    return lift(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
  const auto* raw = events_.in(event);
  // A raw press comes before the press itself: if the key counts as held, its release was missed.
  if (raw &&
      (raw->event_type == XCB_INPUT_RAW_KEY_RELEASE || raw->event_type == XCB_INPUT_RAW_KEY_PRESS))
    lift(static_cast<xcb_keycode_t>(raw->detail));
}

void RepeatFilter::lift(xcb_keycode_t key) {
  if (held_.erase(key) == 0 || !held_.empty())
    return;
  watchRawEvents(false);
  xcb_flush(connection_.get());
}

void RepeatFilter::watchRawEvents(bool on) {
  events_.select(
      on ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0U);
}

}  // namespace tavin::x11
