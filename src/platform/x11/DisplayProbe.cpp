#include "platform/x11/DisplayProbe.h"

namespace tavin::x11 {
namespace {

constexpr double secondsToAnswer = 0.3;

}  // namespace

DisplayProbe::Display DisplayProbe::look() {
  const bool gone = !connection_ || xcb_connection_has_error(connection_->get()) != 0;
  if (!gone && !displayAnswers(Deadline::in(secondsToAnswer)))
    return Display::silent;
  if (!gone) {
    xcb_connection_t* c = connection_->get();
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    if (answer)
      return Display::same;
  }
  connection_ = Connection::open();
  return Display::other;
}

}  // namespace tavin::x11
