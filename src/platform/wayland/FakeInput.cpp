#include "platform/wayland/FakeInput.h"

#include <utility>

#include "platform/copy/CopyChord.h"

namespace tavin::wayland {
namespace {

constexpr std::uint32_t versionWithKeys = 4;
// KWin looks up the desktop file of whoever connects, which may take it seconds after its start.
constexpr double secondsForKwin = 5;
constexpr double secondsForInput = 2;

}  // namespace

std::unique_ptr<FakeInput> FakeInput::create() {
  std::unique_ptr<FakeInput> input(new FakeInput);
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
std::uint64_t FakeInput::heldModifiers() {
  if (!states_)
    return 0;
  const std::uint64_t held = states_->modifiers();
  return connection_->isBroken() && connect() ? states_->modifiers() : held;
}

// All of it reaches the compositor in one piece, or nothing does: this process may end at any
// moment, and a key that it held down then would stay down for the whole session.
void FakeInput::type() {
  for (const auto& step : copy::copyChord(!states_))
    org_kde_kwin_fake_input_keyboard_key(
        input_.get(), static_cast<std::uint32_t>(step.code),
        step.down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
  connection_->roundTrip(Deadline::in(secondsForInput));
}

}  // namespace tavin::wayland
