#include "FakeXEmbedTray.h"

namespace tavin::test {

FakeXEmbedTray::FakeXEmbedTray() {
  xcb_connection_t* xcb = connection_->get();
  window_ = xcb_generate_id(xcb);
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, connection_->root(), 0, 0, 100, 30, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  const xcb_atom_t selection = connection_->atom("_NET_SYSTEM_TRAY_S0");
  xcb_set_selection_owner(xcb, window_, selection, XCB_CURRENT_TIME);
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = connection_->root();
  event.type = connection_->atom("MANAGER");
  event.data.data32[1] = selection;
  event.data.data32[2] = window_;
  xcb_send_event(xcb, 0, connection_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(xcb);
}

std::size_t FakeXEmbedTray::docked() {
  while (const x11::Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())})
    handle(*event);
  return icons_.size();
}

void FakeXEmbedTray::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_DESTROY_NOTIFY)
    icons_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
  if (type != XCB_CLIENT_MESSAGE)
    return;
  constexpr std::uint32_t requestDock = 0;
  const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
  if (message.type != connection_->atom("_NET_SYSTEM_TRAY_OPCODE") ||
      message.data.data32[1] != requestDock)
    return;
  const xcb_window_t icon = message.data.data32[2];
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const auto watching =
      xcb_change_window_attributes_checked(connection_->get(), icon, XCB_CW_EVENT_MASK, &events);
  const x11::Reply<xcb_generic_error_t> gone{xcb_request_check(connection_->get(), watching)};
  if (!gone)
    icons_.insert(icon);
}

}  // namespace tavin::test
