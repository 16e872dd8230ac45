#include "platform/gnome/XwaylandModifiers.h"

#include <utility>

#include "platform/x11/KeyboardSnapshot.h"

namespace tavin::gnome {
namespace {

constexpr double secondsToAnswer = 0.1;

}  // namespace

std::optional<std::uint64_t> XwaylandModifiers::flags() {
  // xcb would wait without end for a display that hangs.
  if (!x11::displayAnswers(Deadline::in(secondsToAnswer)) || !connect() ||
      activeWindow_->find() == XCB_WINDOW_NONE)
    return std::nullopt;
  return x11::KeyboardSnapshot(*connection_).flags();
}

bool XwaylandModifiers::connect() {
  if (connection_ && xcb_connection_has_error(connection_->get()) == 0)
    return true;
  activeWindow_.reset();
  connection_ = x11::Connection::open();
  if (connection_)
    activeWindow_.emplace(*connection_);
  return connection_ != nullptr;
}

std::function<std::uint64_t()> heldModifiersNow(std::shared_ptr<HeldModifiers> modifiers) {
  return [modifiers = std::move(modifiers), keys = std::make_shared<XwaylandModifiers>()] {
    const auto known = keys->flags();
    return known ? *known : modifiers->flags();
  };
}

}  // namespace tavin::gnome
