#include "platform/wayland/KwinModifiers.h"

#include <QtGlobal>

#include "platform/Keyboard.h"
#include "platform/wayland/Listener.h"

namespace tavin::wayland {
namespace {

// The description of the protocol may be older than the compositor, so its newest words stand here.
constexpr std::uint32_t versionWithModifiers = 5;
constexpr std::uint32_t statePressed = 3;
constexpr double secondsForAnswer = 0.1;
constexpr double secondsUntilConnected = 0.4;

std::uint64_t flagOf(std::uint32_t key) {
  switch (key) {
    case 3:  // Alt.
    case 7:  // AltGr.
      return EventFlags::option;
    case 4:
      return EventFlags::control;
    case 5:
      return EventFlags::shift;
    case 6:
      return EventFlags::command;
    default:
      return 0;
  }
}

void noteKey(std::uint64_t& held, std::uint32_t key, std::uint32_t state) {
  if (state == statePressed)
    held |= flagOf(key);
}

}  // namespace

bool kwinReleasesHeldKeys() { return qEnvironmentVariableIntValue("KDE_SESSION_VERSION") == 5; }

std::unique_ptr<KwinModifiers> KwinModifiers::create(Deadline deadline) {
  auto states = on(Connection::open(deadline));
  if (states)
    states->ownsConnection_ = true;
  return states;
}

std::unique_ptr<KwinModifiers> KwinModifiers::on(std::shared_ptr<Connection> connection) {
  return connection && toldOn(*connection)
             ? std::unique_ptr<KwinModifiers>(new KwinModifiers(std::move(connection)))
             : nullptr;
}

bool KwinModifiers::toldOn(const Connection& connection) {
  return connection.offered(org_kde_kwin_keystate_interface.name) >= versionWithModifiers;
}

void KwinModifiers::reconnect() {
  std::shared_ptr<Connection> fresh = Connection::open(Deadline::in(secondsUntilConnected));
  if (fresh && toldOn(*fresh))
    connection_ = std::move(fresh);
}

// The compositor would tell whoever stays bound of each press of a modifier.
std::uint64_t KwinModifiers::modifiers() {
  if (ownsConnection_ && connection_->isBroken())
    reconnect();
  const auto states = connection_->bind<org_kde_kwin_keystate>(org_kde_kwin_keystate_interface,
                                                               versionWithModifiers);
  if (!states)
    return EventFlags::option;
  std::uint64_t held = 0;
  static constexpr org_kde_kwin_keystate_listener events{.stateChanged = calls<noteKey>};
  org_kde_kwin_keystate_add_listener(states.get(), &events, &held);
  org_kde_kwin_keystate_fetchStates(states.get());
  return connection_->roundTrip(Deadline::in(secondsForAnswer)) ? held : EventFlags::option;
}

}  // namespace tavin::wayland
