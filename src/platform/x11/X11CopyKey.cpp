#include "platform/x11/X11CopyKey.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <utility>

#include "platform/x11/KeyboardSnapshot.h"

namespace tavin::x11 {
std::unique_ptr<X11CopyKey> X11CopyKey::create() {
  auto connection = Connection::open();
  if (!connection || connection->extension(xcb_test_id) == nullptr)
    return nullptr;
  return std::unique_ptr<X11CopyKey>(new X11CopyKey(std::move(connection)));
}

X11CopyKey::X11CopyKey(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)), activeWindow_(*connection_) {}

std::uint64_t X11CopyKey::heldModifiers() { return KeyboardSnapshot(*connection_).flags(); }

bool X11CopyKey::prepare() {
  const KeyboardSnapshot state(*connection_);
  control_ = state.keyFor(XKB_KEY_Control_L);
  insert_ = state.keyFor(XKB_KEY_Insert);
  // While a menu or a screen lock holds the keyboard, the keys would go there.
  return control_ && insert_ && !activeWindow_.keyboardIsGrabbed();
}

// All of it reaches the display in one piece, or nothing does: this process may end at any moment,
// and a key that it held down then would stay down for the whole session. When this returns, the
// display has done it all.
void X11CopyKey::type() {
  // A modifier that is still held would make another key of it. It is not pressed again afterwards:
  // the user may have let go meanwhile, and then it would hang.
  for (const xcb_keycode_t key : KeyboardSnapshot(*connection_).heldModifierKeys())
    fake(XCB_KEY_RELEASE, key);
  fake(XCB_KEY_PRESS, *control_);
  fake(XCB_KEY_PRESS, *insert_);
  fake(XCB_KEY_RELEASE, *insert_);
  fake(XCB_KEY_RELEASE, *control_);
  connection_->roundTrip();
}

void X11CopyKey::fake(std::uint8_t type, xcb_keycode_t key) const {
  xcb_test_fake_input(connection_->get(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

}  // namespace tavin::x11
