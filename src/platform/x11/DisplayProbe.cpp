#include "platform/x11/DisplayProbe.h"

namespace tavin::x11 {

bool DisplayProbe::isTheSame() {
  if (connection_) {
    xcb_connection_t* c = connection_->get();
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    if (answer)
      return true;
  }
  connection_ = Connection::open();
  return false;
}

}  // namespace tavin::x11
