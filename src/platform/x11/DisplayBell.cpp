#include "platform/x11/DisplayBell.h"

#include "platform/x11/Connection.h"

namespace tavin::x11 {

void ringDisplayBell() {
  const auto connection = Connection::open();
  if (!connection)
    return;
  xcb_bell(connection->get(), 0);
  // An answer shows that the bell was taken before the connection closes.
  connection->roundTrip();
}

}  // namespace tavin::x11
