#include "platform/x11/KeyboardExtension.h"

// A field of the extension's structures is called `explicit`.
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace tavin::x11 {

void KeyboardExtension::announceTo(const Connection& connection) {
  xcb_connection_t* c = connection.get();
  const auto* xkb = connection.extension(xcb_xkb_id);
  if (xkb == nullptr)
    return;
  event_ = xkb->first_event;
  xcb_discard_reply(
      c, xcb_xkb_use_extension(c, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION).sequence);
  constexpr std::uint32_t repeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  xcb_discard_reply(
      c, xcb_xkb_per_client_flags(c, XCB_XKB_ID_USE_CORE_KBD, repeat, repeat, 0, 0, 0).sequence);
  // Who uses the extension gets no core event for these any more.
  constexpr std::uint16_t changes =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t everyPart = 0xff;
  xcb_xkb_select_events(c, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, everyPart, everyPart,
                        nullptr);
}

bool KeyboardExtension::isChange(const xcb_generic_event_t& event) const {
  const int type = event.response_type & 0x7f;
  return type == XCB_MAPPING_NOTIFY || type == event_;
}

}  // namespace tavin::x11
