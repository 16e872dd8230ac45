#include "platform/widgets/BringToFront.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWidget>
#include <cstdlib>
#include <cstring>

namespace tavin::widgets {

namespace {

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
  const auto cookie = xcb_intern_atom(connection, 0, std::strlen(name), name);
  xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
  const xcb_atom_t result = reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  std::free(reply);
  return result;
}

// Window managers keep a program that the user was not using from taking the focus. A pager acts
// for the user, so it may; the alert answers the user's own key press.
void activateAsPager(xcb_connection_t* connection, xcb_window_t window) {
  constexpr std::uint32_t pager = 2;
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atom(connection, "_NET_ACTIVE_WINDOW");
  event.data.data32[0] = pager;
  event.data.data32[1] = XCB_CURRENT_TIME;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_send_event(connection, 0, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection);
}

}  // namespace

void bringToFront(QWidget& window) {
  window.raise();
  window.activateWindow();
  // Qt's own connection: the message must reach the window manager after the request to map.
  if (const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>())
    activateAsPager(x11->connection(), static_cast<xcb_window_t>(window.winId()));
}

}  // namespace tavin::widgets
