#include "platform/x11/HeldKeys.h"

#include <xcb/xinput.h>

namespace tavin::x11 {
namespace {

constexpr std::uint16_t neededMajor = 2;
constexpr std::uint16_t neededMinor = 1;  // Raw events pass by grabs from there on.

}  // namespace

bool HeldKeys::prepare() {
  xcb_connection_t* c = connection_.get();
  const auto* input = connection_.extension(xcb_input_id);
  if (input == nullptr)
    return false;
  inputExtension_ = input->major_opcode;
  const auto cookie = xcb_input_xi_query_version(c, neededMajor, neededMinor);
  const Reply<xcb_input_xi_query_version_reply_t> version(
      xcb_input_xi_query_version_reply(c, cookie, nullptr));
  return version &&
         (version->major_version > neededMajor ||
          (version->major_version == neededMajor && version->minor_version >= neededMinor));
}

bool HeldKeys::press(xcb_keycode_t key) {
  if (held_.empty())
    watchRawEvents(true);
  return held_.insert(key).second;
}

void HeldKeys::observe(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_KEY_RELEASE)
    return lift(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
  if (type != XCB_GE_GENERIC)
    return;
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  if (raw.extension != inputExtension_)
    return;
  // A raw press comes before the press itself: if the key counts as held, its release was missed.
  if (raw.event_type == XCB_INPUT_RAW_KEY_RELEASE || raw.event_type == XCB_INPUT_RAW_KEY_PRESS)
    lift(static_cast<xcb_keycode_t>(raw.detail));
}

void HeldKeys::lift(xcb_keycode_t key) {
  if (held_.erase(key) == 0 || !held_.empty())
    return;
  watchRawEvents(false);
  xcb_flush(connection_.get());
}

void HeldKeys::watchRawEvents(bool on) {
  const struct {
    xcb_input_event_mask_t header;
    std::uint32_t mask;
  } selection = {
      {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
      on ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0U};
  xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.header);
}

}  // namespace tavin::x11
