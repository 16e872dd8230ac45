#include "platform/wayland/FakeInput.h"

#include <chrono>
#include <utility>

namespace tavin::wayland {
namespace {

constexpr std::uint32_t versionWithKeys = 4;
// KWin looks up the desktop file of whoever connects, which may take it seconds after its start.
constexpr double secondsForKwin = 5;
constexpr double secondsForInput = 2;
constexpr double secondsForKeymap = 0.1;
constexpr std::chrono::milliseconds patience(100);

}  // namespace

std::unique_ptr<FakeInput> FakeInput::create() {
  auto line = connect();
  return line ? std::unique_ptr<FakeInput>(new FakeInput(std::move(line))) : nullptr;
}

std::unique_ptr<FakeInput::Line> FakeInput::connect() {
  const Deadline deadline = Deadline::in(secondsForKwin);
  std::shared_ptr<Connection> connection = Connection::open(deadline);
  if (!connection || connection->offered(org_kde_kwin_fake_input_interface.name) < versionWithKeys)
    return nullptr;
  auto input =
      connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, versionWithKeys);
  org_kde_kwin_fake_input_authenticate(input.get(), "Tavin", "Copies the selected text");
  auto keymap = std::make_unique<Keymap>(*connection);
  auto states = KwinModifiers::on(connection);
  if (!states && !kwinReleasesHeldKeys())
    return nullptr;
  if (!states)
    connection->bindingIsDone();
  // The keymap comes with the second.
  if (!connection->roundTrip(deadline) || !connection->roundTrip(deadline))
    return nullptr;
  return std::make_unique<Line>(
      Line{std::move(connection), std::move(input), std::move(keymap), std::move(states)});
}

// Nobody outlives Plasma 5's KWin.
std::uint64_t FakeInput::heldModifiers() {
  if (!line_->states)
    return 0;
  const std::uint64_t held = line_->states->modifiers();
  return line_->connection->isBroken() && renew() ? line_->states->modifiers() : held;
}

// One attempt serves all who ask until it has ended: KWin may be as slow as that after its start.
bool FakeInput::renew() {
  if (!next_.valid())
    next_ = std::async(std::launch::async, connect);
  if (next_.wait_for(patience) != std::future_status::ready)
    return false;
  auto line = next_.get();
  if (!line || !line->states)
    return false;
  line_ = std::move(line);
  return true;
}

// What is held is asked for last as well, right before the keys are typed.
bool FakeInput::prepare() {
  if (heldModifiers() != 0)
    return false;
  line_->connection->roundTrip(Deadline::in(secondsForKeymap));
  return chord_.lookUp(line_->keymap->text()) && heldModifiers() == 0;
}

// All of it reaches the compositor in one piece, or nothing does: this process may end at any
// moment, and a key that it held down then would stay down for the whole session.
void FakeInput::type() {
  for (const auto& step : copy::copyChord(chord_.keys(), !line_->states))
    org_kde_kwin_fake_input_keyboard_key(
        line_->input.get(), static_cast<std::uint32_t>(step.code),
        step.down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
  line_->connection->roundTrip(Deadline::in(secondsForInput));
}

}  // namespace tavin::wayland
