#include "platform/gnome/CommandShortcuts.h"

#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include "platform/bus/SessionBus.h"
#include "platform/desktop/GioSettings.h"
#include "platform/gnome/KeyHolders.h"
#include "platform/gnome/ShortcutSettings.h"
#include "platform/shortcuts/ShortcutAction.h"

namespace tavin::gnome {

using desktop::GioSettings;
using shortcuts::Answer;
using shortcuts::KeyCombination;

namespace {

constexpr double secondsToAsk = 0.5;
constexpr std::chrono::milliseconds storeDeadline(500);
constexpr std::chrono::milliseconds idleDeadline(300);

const QString settingsDaemon = QStringLiteral("org.gnome.SettingsDaemon.MediaKeys");

// The settings' service may hang; the thread then ends with the process.
void waitUntilStored() {
  std::promise<void> stored;
  std::future<void> done = stored.get_future();
  std::thread([stored = std::move(stored)]() mutable {
    GioSettings::sync();
    stored.set_value();
  }).detach();
  done.wait_for(storeDeadline);
}

}  // namespace

CommandShortcuts::CommandShortcuts(const QDBusConnection& bus, const ServeKey& serveKey,
                                   std::shared_ptr<HeldModifiers> modifiers)
    : bus_(bus), owners_(settingsDaemon, bus), modifiers_(std::move(modifiers)) {
  for (const QString& action : keyActions())
    serveKey(runActionOf(action), [this, alive = QPointer<QObject>(&owners_), action] {
      if (alive)
        commandRan(action);
    });
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceRegistered, &owners_,
                   [this] { daemonChanged(true); });
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceUnregistered, &owners_,
                   [this] { daemonChanged(false); });
}

Answer CommandShortcuts::add(const KeyCombination& combination) {
  if (!GioSettings::open(mediaKeysSchema()))
    return Answer::refused(QStringLiteral("GNOME's settings daemon is not installed"));
  const BothAccelerators keys = BothAccelerators::of(combination);
  const QString action = shortcuts::actionOf(combination);
  if (const auto holder = holderOf(keys, ourCustomPaths())) {
    removeCustomBinding(action);  // A killed Tavin's.
    return Answer::refused(QStringLiteral("it is the key of ") + *holder);
  }
  addCustomBinding(action, shortcuts::fullTitleOf(combination), keys.ours);
  const bool active = daemonRuns();
  bindings_.push_back({.action = action, .combination = combination, .active = active});
  return active ? Answer::granted()
                : Answer::pending(QStringLiteral("GNOME's settings daemon does not run yet"));
}

void CommandShortcuts::remove(const KeyCombination& combination) {
  const auto found = std::ranges::find(bindings_, combination, &Binding::combination);
  if (found == bindings_.end())
    return;
  removeLater(found->action);
  bindings_.erase(found);
}

// Where another key takes its place at once, that is one change for the settings daemon, which gets
// confused by several in a row.
void CommandShortcuts::removeLater(const QString& action) {
  QTimer::singleShot(0, &owners_, [this, action] {
    if (!bindingOf(action))
      removeCustomBinding(action);
  });
}

const CommandShortcuts::Binding* CommandShortcuts::bindingOf(const QString& action) const {
  const auto found = std::ranges::find(bindings_, action, &Binding::action);
  return found == bindings_.end() ? nullptr : &*found;
}

void CommandShortcuts::commandRan(const QString& action) {
  const auto at = Clock::now();
  const bool surelyPress = filters_[action].isSurelyPress(at);
  if (surelyPress)
    press(action, at);
  auto* reply = new QDBusPendingCallWatcher(askIdleTime(bus_, idleDeadline), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this, action, at, surelyPress](QDBusPendingCallWatcher* done) {
                     done->deleteLater();
                     const InputTime last = lastInput(at, *done);
                     if (surelyPress)
                       filters_[action].refine(at, last);
                     else if (filters_[action].isPress(at, last))
                       press(action, at);
                     if (modifiers_)
                       modifiers_->refine(at, last);
                   });
}

void CommandShortcuts::press(const QString& action, Clock::time_point at) {
  const Binding* binding = bindingOf(action);
  if (!binding)
    return;
  if (modifiers_ && action == shortcuts::speakAction)
    modifiers_->pressed(at);
  tellPress(KeyCombination(binding->combination));
}

void CommandShortcuts::release() {
  bindings_.clear();
  removeCustomBindings();
  waitUntilStored();
}

bool CommandShortcuts::daemonRuns() {
  return bus::askBusDaemon(bus_, QStringLiteral("NameHasOwner"), settingsDaemon,
                           Deadline::in(secondsToAsk))
      .toBool();
}

void CommandShortcuts::daemonChanged(bool runs) {
  std::vector<KeyCombination> changed;
  for (Binding& binding : bindings_) {
    if (std::exchange(binding.active, runs) != runs)
      changed.push_back(binding.combination);
  }
  for (const KeyCombination& combination : changed)
    tellAnswer(combination,
               runs ? Answer::granted()
                    : Answer::refused(QStringLiteral("GNOME's settings daemon has ended")));
}

}  // namespace tavin::gnome
