#include "platform/wayland/FakeInput.h"

#include <linux/input-event-codes.h>

#include <array>
#include <utility>

namespace tavin::wayland {
namespace {

constexpr std::uint32_t versionWithKeys = 4;
// KWin looks up the desktop file of whoever connects, which may take it seconds after its start.
constexpr double secondsForKwin = 5;
constexpr double secondsForInput = 2;
constexpr std::array<std::uint32_t, 6> modifiersButAlt{
    KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTMETA, KEY_RIGHTMETA};

}  // namespace

std::unique_ptr<FakeInput> FakeInput::create(std::function<bool()> mayCopy) {
  std::unique_ptr<FakeInput> input(new FakeInput(std::move(mayCopy)));
  return input->connect() ? std::move(input) : nullptr;
}

bool FakeInput::connect() {
  const Deadline deadline = Deadline::in(secondsForKwin);
  std::shared_ptr<Connection> connection = Connection::open(deadline);
  if (!connection || connection->offered(org_kde_kwin_fake_input_interface.name) < versionWithKeys)
    return false;
  auto input =
      connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, versionWithKeys);
  org_kde_kwin_fake_input_authenticate(input.get(), "Tavin", "Copies the selected text");
  auto states = KeyStates::on(connection);
  if (!states && !kwinReleasesHeldKeys())
    return false;
  if (!states)
    connection->bindingIsDone();
  if (!connection->roundTrip(deadline))
    return false;
  // The connection last: what is on it must not outlive it.
  input_ = std::move(input);
  states_ = std::move(states);
  connection_ = std::move(connection);
  return true;
}

// Nobody outlives Plasma 5's KWin.
std::uint64_t FakeInput::flagsState() {
  if (!states_)
    return 0;
  const std::uint64_t held = states_->modifiers();
  return connection_->isBroken() && connect() ? states_->modifiers() : held;
}

// All of it reaches the compositor in one piece, or nothing does: this process may end at any
// moment, and a key that it held down then would stay down for the whole session. Alt comes up
// while Control is down: one that comes up alone opens the menu bar of some programs. No modifier
// is pressed again afterwards: the user may have let go meanwhile, and then it would hang.
void FakeInput::typeChord() {
  const auto key = [this](std::uint32_t code, wl_keyboard_key_state state) {
    org_kde_kwin_fake_input_keyboard_key(input_.get(), code, state);
  };
  for (const auto code : modifiersButAlt) key(code, WL_KEYBOARD_KEY_STATE_RELEASED);
  key(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_PRESSED);
  key(KEY_LEFTALT, WL_KEYBOARD_KEY_STATE_RELEASED);
  key(KEY_RIGHTALT, WL_KEYBOARD_KEY_STATE_RELEASED);
  key(KEY_INSERT, WL_KEYBOARD_KEY_STATE_PRESSED);
  key(KEY_INSERT, WL_KEYBOARD_KEY_STATE_RELEASED);
  key(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_RELEASED);
  connection_->roundTrip(Deadline::in(secondsForInput));
}

}  // namespace tavin::wayland
