#include "platform/kde/GlobalAccel.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/kde/KeyInPlace.h"
#include "platform/kde/QtKey.h"
#include "platform/shortcuts/ShortcutAction.h"
#include "platform/wayland/Keymap.h"

namespace tavin::kde {

using shortcuts::Answer;
using shortcuts::KeyCombination;

namespace {

constexpr int answerDeadline = 500;  // Milliseconds.
// KWin looks up the desktop file of whoever connects.
constexpr double secondsForKeymap = 2;
constexpr int whenItMay = std::numeric_limits<int>::max();

bus::BusSignal::Source signalOfOurs(const QString& name) {
  return {.service = globalAccelService,
          .path = componentPath,
          .interface = QStringLiteral("org.kde.kglobalaccel.Component"),
          .signal = name};
}

Answer heldByAnother() {
  return Answer::refused(QStringLiteral("the desktop or another program holds the shortcut"));
}

std::optional<int> qtKeyNow(const KeyCombination& combination) {
  if (combination.key != KeyCombination::Key::ansiR)
    return qtKey(combination, 0);
  const std::string keymap = wayland::readKeymap(Deadline::in(secondsForKeymap));
  return qtKey(combination, keyInPlaceOfR(keymap, combination.has(KeyCombination::shift)));
}

}  // namespace

GlobalAccel::GlobalAccel()
    : owners_(globalAccelService, *bus_),
      presses_(std::make_unique<bus::BusSignal>(
          *bus_, signalOfOurs(QStringLiteral("globalShortcutPressed")),
          [this](const QDBusMessage& signal) { pressed(signal); })),
      releases_(std::make_unique<bus::BusSignal>(
          *bus_, signalOfOurs(QStringLiteral("globalShortcutReleased")),
          [this](const QDBusMessage& signal) { released(signal); })) {
  QObject::connect(
      &owners_, &QDBusServiceWatcher::serviceOwnerChanged, &owners_,
      [this](const QString&, const QString&, const QString& owner) { serviceChanged(owner); });
}

GlobalAccel::~GlobalAccel() = default;

Answer GlobalAccel::add(const KeyCombination& combination) {
  const auto key = qtKeyNow(combination);
  if (!key)
    return Answer::refused(QStringLiteral("KDE's shortcuts have no such key"));
  const auto registered = std::make_shared<RegisteredAction>();
  registered->combination = combination;
  registered->action = {.name = shortcuts::actionOf(combination),
                        .title = shortcuts::titleOf(combination),
                        .key = *key};
  bus_->send(registration(registered->action));
  const QDBusMessage answer =
      bus_->call(keyRequest(registered->action), QDBus::Block, answerDeadline);
  if (answer.type() != QDBusMessage::ReplyMessage) {
    actions_.push_back(registered);
    // A service that hangs answers one day; one that does not run is asked when it comes.
    if (QDBusError(answer).type() == QDBusError::NoReply)
      ask(registered);
    return Answer::pending(QStringLiteral("KDE's shortcut service has not answered yet"));
  }
  if (!isGranted(answer, registered->action)) {
    bus_->send(removal(registered->action));
    return heldByAnother();
  }
  registered->active = true;
  actions_.push_back(registered);
  return Answer::granted();
}

void GlobalAccel::remove(const KeyCombination& combination) {
  const auto found = std::ranges::find(
      actions_, combination, [](const auto& registered) { return registered->combination; });
  if (found == actions_.end())
    return;
  bus_->send(removal((*found)->action));
  actions_.erase(found);
}

void GlobalAccel::release() {
  if (actions_.empty())
    return;
  for (const auto& registered : std::exchange(actions_, {}))
    bus_->send(removal(registered->action));
  // Once the bus has answered, it has what was sent before.
  bus_->call(QDBusMessage::createMethodCall(
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")),
             QDBus::Block, answerDeadline);
}

void GlobalAccel::ask(const std::shared_ptr<RegisteredAction>& registered) {
  auto* reply = new QDBusPendingCallWatcher(
      bus_->asyncCall(keyRequest(registered->action), whenItMay), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this, registered](QDBusPendingCallWatcher* done) {
                     take(registered, done->reply());
                     done->deleteLater();
                   });
}

void GlobalAccel::take(const std::shared_ptr<RegisteredAction>& registered,
                       const QDBusMessage& answer) {
  // One that was given back meanwhile; or the service has gone again, and is waited for.
  if (std::ranges::find(actions_, registered) == actions_.end() ||
      answer.type() != QDBusMessage::ReplyMessage)
    return;
  const bool granted = isGranted(answer, registered->action);
  if (!granted)
    bus_->send(removal(registered->action));
  if (std::exchange(registered->active, granted) == granted && granted)
    return;
  tellAnswer(registered->combination, granted ? Answer::granted() : heldByAnother());
}

void GlobalAccel::serviceChanged(const QString& owner) {
  for (const auto& registered : std::vector(actions_)) {
    registered->held = false;
    if (!owner.isEmpty()) {
      bus_->send(registration(registered->action));
      ask(registered);
    } else if (std::exchange(registered->active, false)) {
      tellAnswer(registered->combination,
                 Answer::refused(QStringLiteral("KDE's shortcut service has ended")));
    }
  }
}

// A held key repeats its press until it is released.
void GlobalAccel::pressed(const QDBusMessage& signal) {
  RegisteredAction* registered = actionIn(signal);
  if (!registered || !registered->active || std::exchange(registered->held, true))
    return;
  tellPress(KeyCombination(registered->combination));
}

void GlobalAccel::released(const QDBusMessage& signal) {
  if (RegisteredAction* registered = actionIn(signal))
    registered->held = false;
}

GlobalAccel::RegisteredAction* GlobalAccel::actionIn(const QDBusMessage& signal) const {
  const QString name = signal.arguments().value(1).toString();
  const auto found = std::ranges::find_if(
      actions_, [&name](const auto& registered) { return registered->action.name == name; });
  return found == actions_.end() ? nullptr : found->get();
}

}  // namespace tavin::kde
