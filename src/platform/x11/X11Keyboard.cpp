#include "platform/x11/X11Keyboard.h"

#include <xcb/xtest.h>

#include <utility>

#include "platform/x11/KeyState.h"

namespace tavin::x11 {
namespace {

constexpr std::uint16_t keyInPositionC = 8;
constexpr std::uint32_t controlSymbol = 0xffe3;
constexpr std::uint32_t insertSymbol = 0xff63;

bool hasTestExtension(xcb_connection_t* c) {
  const auto* extension = xcb_get_extension_data(c, &xcb_test_id);
  return extension && extension->present;
}

}  // namespace

struct X11Keyboard::Chord {
  const Connection& connection;
  xcb_keycode_t control = 0;
  xcb_keycode_t insert = 0;

  void fake(std::uint8_t type, xcb_keycode_t key) const {
    xcb_test_fake_input(connection.get(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  }

  // All of it reaches the display in one piece, or nothing does: this process may end at any
  // moment, and a key that it held down then would stay down for the whole session. When this
  // returns, the display has done it all.
  void type() const {
    // A modifier that is still held would make another key of it. It is not pressed again
    // afterwards: the user may have let go meanwhile, and then it would hang.
    for (const xcb_keycode_t key : KeyState(connection).heldModifierKeys())
      fake(XCB_KEY_RELEASE, key);
    fake(XCB_KEY_PRESS, control);
    fake(XCB_KEY_PRESS, insert);
    fake(XCB_KEY_RELEASE, insert);
    fake(XCB_KEY_RELEASE, control);
    xcb_connection_t* c = connection.get();
    Reply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
  }
};

// The key going down, which types the whole chord.
class X11Keyboard::CopyEvent final : public KeyboardEvent {
 public:
  explicit CopyEvent(Chord chord) : chord_(chord) {}

  void setFlags(std::uint64_t flags) override { flags_ = flags; }
  void post() override {
    if (flags_ == EventFlags::command)  // Else it is no copy command, and types nothing.
      chord_.type();
  }

 private:
  const Chord chord_;
  std::uint64_t flags_ = 0;
};

// The key going up. The chord let go of its keys itself, so nothing is left to do.
class X11Keyboard::ReleasedEvent final : public KeyboardEvent {
 public:
  void setFlags(std::uint64_t) override {}
  void post() override {}
};

std::unique_ptr<X11Keyboard> X11Keyboard::create(std::function<bool()> mayCopy) {
  auto connection = Connection::open();
  if (!connection)
    return nullptr;
  return std::unique_ptr<X11Keyboard>(new X11Keyboard(std::move(connection), std::move(mayCopy)));
}

X11Keyboard::X11Keyboard(std::unique_ptr<Connection> connection, std::function<bool()> mayCopy)
    : connection_(std::move(connection)),
      mayCopy_(std::move(mayCopy)),
      activeWindow_(*connection_),
      canType_(hasTestExtension(connection_->get())) {}

std::uint64_t X11Keyboard::flagsState() { return KeyState(*connection_).flags(); }

std::unique_ptr<KeyboardEvent> X11Keyboard::createKeyboardEvent(std::uint16_t keyCode, bool down) {
  if (keyCode != keyInPositionC)
    return nullptr;
  if (!down)
    return std::exchange(chordMade_, false) ? std::make_unique<ReleasedEvent>() : nullptr;
  const auto chord = prepareChord();
  chordMade_ = chord.has_value();
  return chord ? std::make_unique<CopyEvent>(*chord) : nullptr;
}

std::optional<X11Keyboard::Chord> X11Keyboard::prepareChord() {
  const KeyState state(*connection_);
  const auto control = state.keyFor(controlSymbol);
  const auto insert = state.keyFor(insertSymbol);
  // While a menu or a screen lock holds the keyboard, the keys would go there.
  if (!canType_ || !control || !insert || activeWindow_.keyboardIsGrabbed() || !mayCopy_())
    return std::nullopt;
  return Chord{*connection_, *control, *insert};
}

}  // namespace tavin::x11
