#include "platform/x11/Connection.h"

namespace tavin::x11 {

std::unique_ptr<Connection> Connection::open() {
  int preferred = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &preferred);
  if (xcb_connection_has_error(connection) == 0) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < preferred && screens.rem > 1; ++i) xcb_screen_next(&screens);
    if (screens.rem > 0)
      return std::unique_ptr<Connection>(new Connection(connection, screens.data));
  }
  xcb_disconnect(connection);
  return nullptr;
}

Connection::Connection(xcb_connection_t* connection, xcb_screen_t* screen)
    : connection_(connection), screen_(screen) {}

Connection::~Connection() { xcb_disconnect(connection_); }

xcb_atom_t Connection::atom(std::string_view name) const {
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace tavin::x11
