#include "platform/x11/DisplayProbe.h"

namespace tavin::x11 {
namespace {

constexpr double secondsToAnswer = 0.3;

}  // namespace

DisplayProbe::Display DisplayProbe::look() {
  const bool gone = !connection_ || xcb_connection_has_error(connection_->get()) != 0;
  if (!gone && !displayAnswers(Deadline::in(secondsToAnswer)))
    return Display::silent;
  if (!gone && connection_->roundTrip())
    return Display::same;
  connection_ = Connection::open();
  return Display::other;
}

}  // namespace tavin::x11
