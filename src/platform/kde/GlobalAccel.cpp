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
  const auto hotKey = std::make_shared<HotKey>();
  hotKey->combination = combination;
  hotKey->action = {.name = shortcuts::actionOf(combination),
                    .title = shortcuts::titleOf(combination),
                    .key = *key};
  bus_->send(registration(hotKey->action));
  const QDBusMessage answer = bus_->call(keyRequest(hotKey->action), QDBus::Block, answerDeadline);
  if (answer.type() != QDBusMessage::ReplyMessage) {
    hotKeys_.push_back(hotKey);
    // A service that hangs answers one day; one that does not run is asked when it comes.
    if (QDBusError(answer).type() == QDBusError::NoReply)
      ask(hotKey);
    return Answer::pending(QStringLiteral("KDE's shortcut service has not answered yet"));
  }
  if (!isGranted(answer, hotKey->action)) {
    bus_->send(removal(hotKey->action));
    return heldByAnother();
  }
  hotKey->active = true;
  hotKeys_.push_back(hotKey);
  return Answer::granted();
}

void GlobalAccel::remove(const KeyCombination& combination) {
  const auto found = std::ranges::find(hotKeys_, combination,
                                       [](const auto& hotKey) { return hotKey->combination; });
  if (found == hotKeys_.end())
    return;
  bus_->send(removal((*found)->action));
  hotKeys_.erase(found);
}

void GlobalAccel::release() {
  if (hotKeys_.empty())
    return;
  for (const auto& hotKey : std::exchange(hotKeys_, {})) bus_->send(removal(hotKey->action));
  // Once the bus has answered, it has what was sent before.
  bus_->call(QDBusMessage::createMethodCall(
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")),
             QDBus::Block, answerDeadline);
}

void GlobalAccel::ask(const std::shared_ptr<HotKey>& hotKey) {
  auto* reply =
      new QDBusPendingCallWatcher(bus_->asyncCall(keyRequest(hotKey->action), whenItMay), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this, hotKey](QDBusPendingCallWatcher* done) {
                     take(hotKey, done->reply());
                     done->deleteLater();
                   });
}

void GlobalAccel::take(const std::shared_ptr<HotKey>& hotKey, const QDBusMessage& answer) {
  // One that was given back meanwhile; or the service has gone again, and is waited for.
  if (std::ranges::find(hotKeys_, hotKey) == hotKeys_.end() ||
      answer.type() != QDBusMessage::ReplyMessage)
    return;
  const bool granted = isGranted(answer, hotKey->action);
  if (!granted)
    bus_->send(removal(hotKey->action));
  if (std::exchange(hotKey->active, granted) == granted && granted)
    return;
  tellAnswer(hotKey->combination, granted ? Answer::granted() : heldByAnother());
}

void GlobalAccel::serviceChanged(const QString& owner) {
  for (const auto& hotKey : std::vector(hotKeys_)) {
    hotKey->held = false;
    if (!owner.isEmpty()) {
      bus_->send(registration(hotKey->action));
      ask(hotKey);
    } else if (std::exchange(hotKey->active, false)) {
      tellAnswer(hotKey->combination,
                 Answer::refused(QStringLiteral("KDE's shortcut service has ended")));
    }
  }
}

// A held key repeats its press until it is released.
void GlobalAccel::pressed(const QDBusMessage& signal) {
  HotKey* hotKey = hotKeyIn(signal);
  if (!hotKey || !hotKey->active || std::exchange(hotKey->held, true))
    return;
  tellPress(KeyCombination(hotKey->combination));
}

void GlobalAccel::released(const QDBusMessage& signal) {
  if (HotKey* hotKey = hotKeyIn(signal))
    hotKey->held = false;
}

GlobalAccel::HotKey* GlobalAccel::hotKeyIn(const QDBusMessage& signal) const {
  const QString name = signal.arguments().value(1).toString();
  const auto found = std::ranges::find_if(
      hotKeys_, [&name](const auto& hotKey) { return hotKey->action.name == name; });
  return found == hotKeys_.end() ? nullptr : found->get();
}

}  // namespace tavin::kde
