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
  const Deadline deadline = Deadline::in(secondsForKwin);
  std::shared_ptr<Connection> connection = Connection::open(deadline);
  if (!connection || connection->offered(org_kde_kwin_fake_input_interface.name) < versionWithKeys)
    return nullptr;
  auto input =
      connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, versionWithKeys);
  org_kde_kwin_fake_input_authenticate(input.get(), "Tavin", "Copies the selected text");
  auto states = KeyStates::on(connection);
  if (!states && !kwinReleasesHeldKeys())
    return nullptr;
  if (!states)
    connection->bindingIsDone();
  if (!connection->roundTrip(deadline))
    return nullptr;
  return std::unique_ptr<FakeInput>(new FakeInput(std::move(connection), std::move(input),
                                                  std::move(mayCopy), std::move(states)));
}

FakeInput::FakeInput(std::shared_ptr<Connection> connection, Owned<org_kde_kwin_fake_input> input,
                     std::function<bool()> mayCopy, std::unique_ptr<KeyStates> states)
    : CopyKeyboard(std::move(mayCopy)),
      connection_(std::move(connection)),
      input_(std::move(input)),
      states_(std::move(states)) {}

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
