#include "platform/gnome/CustomBindings.h"

#include <QDBusMessage>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include "platform/desktop/ShortcutAction.h"
#include "platform/gnome/CustomKeybindings.h"
#include "platform/gnome/KeyHolders.h"
#include "platform/gnome/Settings.h"

namespace tavin::gnome {
namespace {

constexpr int busDeadline = 500;  // Milliseconds.
constexpr std::chrono::milliseconds storeDeadline(500);

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
  bool active = false;
};

CustomBindings::CustomBindings(const QDBusConnection& bus)
    : bus_(bus), owners_(settingsDaemon, bus, QDBusServiceWatcher::WatchForRegistration) {
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceRegistered, &owners_,
                   [this] { daemonCame(); });
}

std::int32_t CustomBindings::installEventHandler(std::function<void(EventHotKeyID)>) { return 0; }

void CustomBindings::installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) {
  answered_ = std::move(callback);
}

HotkeyRegistration CustomBindings::registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers, EventHotKeyID) {
  const auto combination = Combination::of(keyCode, modifiers);
  if (!combination)
    return HotkeyRegistration::refused(QStringLiteral("GNOME's shortcuts have no such key"));
  if (!Settings::open(mediaKeysSchema()))
    return HotkeyRegistration::refused(QStringLiteral("GNOME's settings daemon is not installed"));
  auto hotKey = std::make_shared<HotKey>();
  hotKey->action = desktop::shortcutAction(modifiers);
  if (holds(hotKey->action))
    return HotkeyRegistration::refused(QStringLiteral("Tavin itself holds the combination"));
  if (const auto holder = holderOf(*combination, ourCustomPaths())) {
    removeCustomBinding(hotKey->action);  // A killed Tavin's.
    return HotkeyRegistration::refused(QStringLiteral("it is the key of ") + *holder);
  }
  addCustomBinding(hotKey->action, desktop::shortcutTitle(modifiers), combination->ours);
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
    if (!holds(action))
      removeCustomBinding(action);
  });
}

bool CustomBindings::holds(const QString& action) const {
  return std::ranges::any_of(hotKeys_,
                             [&action](const auto& hotKey) { return hotKey->action == action; });
}

void CustomBindings::release() {
  hotKeys_.clear();
  removeCustomBindings();
  waitUntilStored();
}

bool CustomBindings::daemonRuns() {
  const QString bus = QStringLiteral("org.freedesktop.DBus");
  QDBusMessage question = QDBusMessage::createMethodCall(
      bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("NameHasOwner"));
  question << settingsDaemon;
  return bus_.call(question, QDBus::Block, busDeadline).arguments().value(0).toBool();
}

void CustomBindings::daemonCame() {
  for (const auto& hotKey : std::vector(hotKeys_)) {
    if (!std::exchange(hotKey->active, true) && answered_)
      answered_(HotkeyRegistration::granted(hotKey));
  }
}

}  // namespace tavin::gnome
