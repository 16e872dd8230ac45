#include "platform/x11/RawEvents.h"

namespace tavin::x11 {
namespace {

constexpr std::uint16_t neededMajor = 2;
constexpr std::uint16_t neededMinor = 1;  // Raw events pass by grabs from there on.

}  // namespace

bool RawEvents::prepare() {
  xcb_connection_t* c = connection_.get();
  const auto* input = connection_.extension(xcb_input_id);
  if (input == nullptr)
    return false;
  extension_ = input->major_opcode;
  const auto cookie = xcb_input_xi_query_version(c, neededMajor, neededMinor);
  const Reply<xcb_input_xi_query_version_reply_t> version(
      xcb_input_xi_query_version_reply(c, cookie, nullptr));
  return version &&
         (version->major_version > neededMajor ||
          (version->major_version == neededMajor && version->minor_version >= neededMinor));
}

void RawEvents::select(std::uint32_t mask) const {
  const struct {
    xcb_input_event_mask_t header;
    std::uint32_t mask;
  } selection = {{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, mask};
  xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.header);
}

const xcb_input_raw_key_press_event_t* RawEvents::in(const xcb_generic_event_t& event) const {
  if ((event.response_type & 0x7f) != XCB_GE_GENERIC)
    return nullptr;
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  return raw.extension == extension_ ? &raw : nullptr;
}

}  // namespace tavin::x11
