#include "platform/x11/DisplayBell.h"

#include "platform/x11/Connection.h"

namespace tavin::x11 {

void ringDisplayBell() {
  const auto connection = Connection::open();
  if (!connection)
    return;
  xcb_bell(connection->get(), 0);
  // An answer shows that the bell was taken before the connection closes.
  const auto cookie = xcb_get_input_focus(connection->get());
  const Reply<xcb_get_input_focus_reply_t> answer(
      xcb_get_input_focus_reply(connection->get(), cookie, nullptr));
}

}  // namespace tavin::x11
