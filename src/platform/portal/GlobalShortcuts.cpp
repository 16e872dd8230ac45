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
  if (asked_.empty() || restartedLately)
    return;
  lastRestart_.start();
  QTimer::singleShot(beforeRestart, &owners_, [this] { announceTo(*bus_); });
}

Answer GlobalShortcuts::add(const KeyCombination& combination) {
  if (const auto holder = holder_(combination))
    return Answer::refused(QStringLiteral("it is the key of ") + *holder);
  const auto asked = std::make_shared<AskedShortcut>();
  asked->combination = combination;
  asked->wanted = wantedShortcut(combination);
  asked_.push_back(asked);
  startOverSoon();
  return Answer::pending(QStringLiteral("the desktop has not answered yet"));
}

void GlobalShortcuts::remove(const KeyCombination& combination) {
  if (std::erase_if(asked_, [&combination](const auto& each) {
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
  for (const auto& asked : asked_) asked->held = false;  // Its release would not be heard.
  if (!asked_.empty())
    createSession();
}

void GlobalShortcuts::createSession() {
  creating_ = true;
  const auto wanted = asked_;
  ask(QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), sessionToken}},
      [this, wanted](int code, const QVariantMap& results) {
        creating_ = false;
        if (code == succeeded)
          session_ = QDBusObjectPath(results.value(QStringLiteral("session_handle")).toString());
        if (wanted != asked_)
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
            std::ranges::none_of(asked_, [](const auto& asked) { return asked->declined; });
        if (lacksAny(given) && mayAsk)
          bind();
        else
          take(given);
      });
}

void GlobalShortcuts::bind() {
  QList<Shortcut> wanted;
  for (const auto& asked : asked_) wanted << asked->wanted;
  ask(QStringLiteral("BindShortcuts"),
      {QVariant::fromValue(session_), toArgument(wanted), QString()}, {},
      [this](int code, const QVariantMap& results) {
        // GNOME's ends "otherwise" also when all went well, and then tells the shortcuts.
        const auto given = shortcutsIn(results);
        if (given && (code == succeeded || code == endedOtherwise))
          return take(*given);
        for (const auto& asked : asked_) asked->declined = code == declined;
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
  return std::ranges::any_of(asked_, [&given](const auto& asked) {
    return std::ranges::find(given, asked->wanted.id, &Shortcut::id) == given.end();
  });
}

// One that the desktop lists without a key is not bound.
void GlobalShortcuts::take(const QList<Shortcut>& given) {
  for (const auto& asked : std::vector(asked_)) {
    const auto found = std::ranges::find(given, asked->wanted.id, &Shortcut::id);
    const bool active = found != given.end() && !found->trigger().isEmpty();
    settle(asked, active, QStringLiteral("the desktop gave it no key"));
  }
}

void GlobalShortcuts::refuseAll(const QString& reason) {
  for (const auto& asked : std::vector(asked_)) settle(asked, false, reason);
}

void GlobalShortcuts::settle(const std::shared_ptr<AskedShortcut>& asked, bool active,
                             const QString& reason) {
  const bool first = !std::exchange(asked->answered, true);
  const bool changed = std::exchange(asked->active, active) != active;
  if (first || changed)
    tellAnswer(asked->combination, active ? Answer::granted() : Answer::refused(reason));
}

void GlobalShortcuts::listen() {
  const auto hear = [this](const QString& interface, const QString& name, auto handler) {
    signals_.push_back(std::make_unique<bus::BusSignal>(
        *bus_, bus::BusSignal::Source{portalService, {}, interface, name}, handler));
  };
  hear(shortcutsInterface, QStringLiteral("Activated"), [this](const QDBusMessage& signal) {
    AskedShortcut* asked = askedIn(signal);
    if (!asked || !asked->active || std::exchange(asked->held, true))
      return;
    keepTokenOf(signal);
    if (pressed_)
      pressed_();
    tellPress(KeyCombination(asked->combination));
  });
  hear(shortcutsInterface, QStringLiteral("Deactivated"), [this](const QDBusMessage& signal) {
    if (AskedShortcut* asked = askedIn(signal))
      asked->held = false;
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

GlobalShortcuts::AskedShortcut* GlobalShortcuts::askedIn(const QDBusMessage& signal) const {
  const auto session = signal.arguments().value(0).value<QDBusObjectPath>();
  if (session != session_)
    return nullptr;
  const QString id = signal.arguments().value(1).toString();
  const auto found =
      std::ranges::find_if(asked_, [&id](const auto& asked) { return asked->wanted.id == id; });
  return found == asked_.end() ? nullptr : found->get();
}

}  // namespace tavin::portal
