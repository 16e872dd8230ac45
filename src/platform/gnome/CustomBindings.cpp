#include "platform/gnome/CustomBindings.h"

#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include "platform/bus/SessionBus.h"
#include "platform/gnome/CustomKeybindings.h"
#include "platform/gnome/KeyHolders.h"
#include "platform/gnome/Settings.h"
#include "platform/shortcuts/ShortcutAction.h"

namespace tavin::gnome {
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
    Settings::sync();
    stored.set_value();
  }).detach();
  done.wait_for(storeDeadline);
}

}  // namespace

struct CustomBindings::HotKey final : EventHotKey {
  QString action;
  EventHotKeyID id;
  bool active = false;
};

CustomBindings::CustomBindings(const QDBusConnection& bus, const ServeKey& serveKey,
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

HotkeyRegistration CustomBindings::registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers, EventHotKeyID id) {
  const auto combination = Combination::of(keyCode, modifiers);
  if (!combination)
    return HotkeyRegistration::refused(QStringLiteral("GNOME's shortcuts have no such key"));
  if (!Settings::open(mediaKeysSchema()))
    return HotkeyRegistration::refused(QStringLiteral("GNOME's settings daemon is not installed"));
  auto hotKey = std::make_shared<HotKey>();
  hotKey->action = shortcuts::shortcutAction(modifiers);
  hotKey->id = id;
  if (keyOf(hotKey->action))
    return HotkeyRegistration::refused(QStringLiteral("Tavin itself holds the combination"));
  if (const auto holder = holderOf(*combination, ourCustomPaths())) {
    removeCustomBinding(hotKey->action);  // A killed Tavin's.
    return HotkeyRegistration::refused(QStringLiteral("it is the key of ") + *holder);
  }
  addCustomBinding(hotKey->action, shortcuts::shortcutTitle(modifiers), combination->ours);
  hotKeys_.push_back(hotKey);
  hotKey->active = daemonRuns();
  if (!hotKey->active)
    return HotkeyRegistration::refused(QStringLiteral("GNOME's settings daemon does not run yet"),
                                       hotKey);
  return HotkeyRegistration::granted(hotKey);
}

void CustomBindings::unregisterEventHotKey(const EventHotKeyRef& ref) {
  const auto found = std::ranges::find(hotKeys_, ref);
  if (found == hotKeys_.end())
    return;
  removeLater((*found)->action);
  hotKeys_.erase(found);
}

// Where another key takes its place at once, that is one change for the settings daemon, which gets
// confused by several in a row.
void CustomBindings::removeLater(const QString& action) {
  QTimer::singleShot(0, &owners_, [this, action] {
    if (!keyOf(action))
      removeCustomBinding(action);
  });
}

std::shared_ptr<CustomBindings::HotKey> CustomBindings::keyOf(const QString& action) const {
  const auto found =
      std::ranges::find(hotKeys_, action, [](const auto& key) { return key->action; });
  return found == hotKeys_.end() ? nullptr : *found;
}

void CustomBindings::commandRan(const QString& action) {
  const auto at = Clock::now();
  const bool surelyPress = filters_[action].isSurelyPress(at);
  if (surelyPress)
    press(action, at);
  auto* reply = new QDBusPendingCallWatcher(askIdleTime(bus_, idleDeadline), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this, action, at, surelyPress](QDBusPendingCallWatcher* done) {
                     done->deleteLater();
                     const Input last = lastInput(at, *done);
                     if (surelyPress)
                       filters_[action].refine(at, last);
                     else if (filters_[action].isPress(at, last))
                       press(action, at);
                     if (modifiers_)
                       modifiers_->refine(at, last);
                   });
}

void CustomBindings::press(const QString& action, Clock::time_point at) {
  const auto hotKey = keyOf(action);
  if (!hotKey)
    return;
  if (modifiers_ && action == shortcuts::shortcutAction(0))
    modifiers_->pressed(at);
  tellPress(hotKey->id);
}

void CustomBindings::release() {
  hotKeys_.clear();
  removeCustomBindings();
  waitUntilStored();
}

bool CustomBindings::daemonRuns() {
  return bus::askBusDaemon(bus_, QStringLiteral("NameHasOwner"), settingsDaemon,
                           Deadline::in(secondsToAsk))
      .toBool();
}

void CustomBindings::daemonChanged(bool runs) {
  for (const auto& hotKey : std::vector(hotKeys_)) {
    if (std::exchange(hotKey->active, runs) != runs)
      tellAnswer(runs ? HotkeyRegistration::granted(hotKey)
                      : HotkeyRegistration::refused(
                            QStringLiteral("GNOME's settings daemon has ended"), hotKey));
  }
}

}  // namespace tavin::gnome
