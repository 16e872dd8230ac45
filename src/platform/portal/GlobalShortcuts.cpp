#include "platform/portal/GlobalShortcuts.h"

#include <QDBusArgument>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/ActivationToken.h"
#include "platform/portal/Portal.h"

namespace tavin::portal {

using shortcuts::Answer;
using shortcuts::KeyCombination;

namespace {

using std::chrono::milliseconds;

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
constexpr milliseconds beforeRestart(1000);
constexpr milliseconds betweenRestarts(60000);

// The same at each start: some desktops know a program's shortcuts by it.
const QString sessionToken = QStringLiteral("tavin");

// GNOME's own part of a portal outlives the portal, and would keep the keys for a session that no
// program hears of any more.
void closeInGnome(const QDBusConnection& bus, const QDBusObjectPath& session) {
  if (session.path().isEmpty())
    return;
  QDBusMessage close = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.impl.portal.desktop.gnome"), session.path(),
      QStringLiteral("org.freedesktop.impl.portal.Session"), QStringLiteral("Close"));
  close.setAutoStartService(false);
  bus.send(close);
}

// Where the desktop gives one, the alert that the press may lead to comes to the front by it.
void keepTokenOf(const QDBusMessage& activated) {
  const auto options = activated.arguments().value(3);
  if (options.metaType() != QMetaType::fromType<QDBusArgument>() ||
      options.value<QDBusArgument>().currentSignature() != QLatin1String("a{sv}"))
    return;
  keepActivationToken(
      qdbus_cast<QVariantMap>(options).value(QStringLiteral("activation_token")).toString());
}

}  // namespace

GlobalShortcuts::GlobalShortcuts(Holder holder, std::function<void()> pressed)
    : holder_(std::move(holder)), pressed_(std::move(pressed)), owners_(portalService, *bus_) {
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceUnregistered, &owners_,
                   [this] { portalLeft(); });
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceRegistered, &owners_, [this] {
    // Our own first call may have started it.
    if (!std::exchange(portalGone_, false))
      return;
    announceTo(*bus_);
    startOverSoon();
  });
  listen();
  announceTo(*bus_);
}

GlobalShortcuts::~GlobalShortcuts() = default;

// The first message has the bus start it again, and no press can while our keys are gone. One that
// does not stay is left to whoever else needs it.
void GlobalShortcuts::portalLeft() {
  portalGone_ = true;
  creating_ = false;
  request_.reset();
  closeInGnome(*bus_, std::exchange(session_, {}));
  refuseAll(QStringLiteral("the desktop's portal has ended"));
  const bool restartedLately =
      lastRestart_.isValid() && !lastRestart_.hasExpired(betweenRestarts.count());
  if (hotKeys_.empty() || restartedLately)
    return;
  lastRestart_.start();
  QTimer::singleShot(beforeRestart, &owners_, [this] { announceTo(*bus_); });
}

Answer GlobalShortcuts::add(const KeyCombination& combination) {
  if (const auto holder = holder_(combination))
    return Answer::refused(QStringLiteral("it is the key of ") + *holder);
  const auto hotKey = std::make_shared<HotKey>();
  hotKey->combination = combination;
  hotKey->wanted = wantedShortcut(combination);
  hotKeys_.push_back(hotKey);
  startOverSoon();
  return Answer::pending(QStringLiteral("the desktop has not answered yet"));
}

void GlobalShortcuts::remove(const KeyCombination& combination) {
  if (std::erase_if(hotKeys_, [&combination](const auto& each) {
        return each->combination == combination;
      }) != 0)
    startOverSoon();
}

// What a session has bound it keeps to its end, so another set of shortcuts takes another session.
void GlobalShortcuts::startOverSoon() {
  if (std::exchange(startsSoon_, true))
    return;
  QTimer::singleShot(0, &owners_, [this] {
    startsSoon_ = false;
    startOver();
  });
}

void GlobalShortcuts::startOver() {
  if (creating_)
    return;  // It starts over then.
  closeSession();
  for (const auto& hotKey : hotKeys_) hotKey->held = false;  // Its release would not be heard.
  if (!hotKeys_.empty())
    createSession();
}

void GlobalShortcuts::createSession() {
  creating_ = true;
  const auto wanted = hotKeys_;
  ask(QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), sessionToken}},
      [this, wanted](int code, const QVariantMap& results) {
        creating_ = false;
        if (code == succeeded)
          session_ = QDBusObjectPath(results.value(QStringLiteral("session_handle")).toString());
        if (wanted != hotKeys_)
          return startOver();
        if (code == succeeded && !session_.path().isEmpty())
          return list();
        portalGone_ = code == callFailed;
        refuseAll(QStringLiteral("the desktop has no portal for shortcuts"));
      });
}

void GlobalShortcuts::list() {
  ask(QStringLiteral("ListShortcuts"), {QVariant::fromValue(session_)}, {},
      [this](int, const QVariantMap& results) {
        const auto given = shortcutsIn(results).value_or(QList<Shortcut>());
        const bool mayAsk =
            std::ranges::none_of(hotKeys_, [](const auto& hotKey) { return hotKey->declined; });
        if (lacksAny(given) && mayAsk)
          bind();
        else
          take(given);
      });
}

void GlobalShortcuts::bind() {
  QList<Shortcut> wanted;
  for (const auto& hotKey : hotKeys_) wanted << hotKey->wanted;
  ask(QStringLiteral("BindShortcuts"),
      {QVariant::fromValue(session_), toArgument(wanted), QString()}, {},
      [this](int code, const QVariantMap& results) {
        // GNOME's ends "otherwise" also when all went well, and then tells the shortcuts.
        const auto given = shortcutsIn(results);
        if (given && (code == succeeded || code == endedOtherwise))
          return take(*given);
        for (const auto& hotKey : hotKeys_) hotKey->declined = code == declined;
        refuseAll(code == declined ? QStringLiteral("it was declined in the desktop's dialog")
                                   : QStringLiteral("the desktop's portal failed"));
      });
}

void GlobalShortcuts::ask(const QString& method, QVariantList arguments, QVariantMap options,
                          Request::Answer answer) {
  request_ = std::make_unique<Request>(*bus_, shortcutsInterface, method, std::move(arguments),
                                       std::move(options), std::move(answer));
}

void GlobalShortcuts::closeSession() {
  request_.reset();
  portal::closeSession(*bus_, std::exchange(session_, {}));
}

bool GlobalShortcuts::lacksAny(const QList<Shortcut>& given) const {
  return std::ranges::any_of(hotKeys_, [&given](const auto& hotKey) {
    return std::ranges::find(given, hotKey->wanted.id, &Shortcut::id) == given.end();
  });
}

// One that the desktop lists without a key is not bound.
void GlobalShortcuts::take(const QList<Shortcut>& given) {
  for (const auto& hotKey : std::vector(hotKeys_)) {
    const auto found = std::ranges::find(given, hotKey->wanted.id, &Shortcut::id);
    const bool active = found != given.end() && !found->trigger().isEmpty();
    settle(hotKey, active, QStringLiteral("the desktop gave it no key"));
  }
}

void GlobalShortcuts::refuseAll(const QString& reason) {
  for (const auto& hotKey : std::vector(hotKeys_)) settle(hotKey, false, reason);
}

void GlobalShortcuts::settle(const std::shared_ptr<HotKey>& hotKey, bool active,
                             const QString& reason) {
  const bool first = !std::exchange(hotKey->answered, true);
  const bool changed = std::exchange(hotKey->active, active) != active;
  if (first || changed)
    tellAnswer(hotKey->combination, active ? Answer::granted() : Answer::refused(reason));
}

void GlobalShortcuts::listen() {
  const auto hear = [this](const QString& interface, const QString& name, auto handler) {
    signals_.push_back(std::make_unique<bus::BusSignal>(
        *bus_, bus::BusSignal::Source{portalService, {}, interface, name}, handler));
  };
  hear(shortcutsInterface, QStringLiteral("Activated"), [this](const QDBusMessage& signal) {
    HotKey* hotKey = hotKeyIn(signal);
    if (!hotKey || !hotKey->active || std::exchange(hotKey->held, true))
      return;
    keepTokenOf(signal);
    if (pressed_)
      pressed_();
    tellPress(KeyCombination(hotKey->combination));
  });
  hear(shortcutsInterface, QStringLiteral("Deactivated"), [this](const QDBusMessage& signal) {
    if (HotKey* hotKey = hotKeyIn(signal))
      hotKey->held = false;
  });
  hear(sessionInterface, QStringLiteral("Closed"), [this](const QDBusMessage& signal) {
    if (signal.path() != session_.path())
      return;
    session_ = {};
    // Closed instead of answered: another session would only show the same question again.
    if (request_ && request_->isPending()) {
      request_.reset();
      return refuseAll(QStringLiteral("the desktop has closed its question"));
    }
    startOverSoon();
  });
}

GlobalShortcuts::HotKey* GlobalShortcuts::hotKeyIn(const QDBusMessage& signal) const {
  const auto session = signal.arguments().value(0).value<QDBusObjectPath>();
  if (session != session_)
    return nullptr;
  const QString id = signal.arguments().value(1).toString();
  const auto found =
      std::ranges::find_if(hotKeys_, [&id](const auto& hotKey) { return hotKey->wanted.id == id; });
  return found == hotKeys_.end() ? nullptr : found->get();
}

}  // namespace tavin::portal
