#include "platform/portal/RemoteDesktop.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <utility>

#include "platform/Deadline.h"
#include "platform/portal/Portal.h"

namespace tavin::portal {
namespace {

constexpr uint keyboardDevice = 1;
constexpr uint firstVersionThatRemembers = 2;
constexpr uint untilRevoked = 2;
// A desktop that fails in the middle of each question shall not go on flashing dialogs.
constexpr int mostInVain = 3;
constexpr double typingSeconds = 1.0;
constexpr int offerDeadline = 10000;  // Milliseconds; the portal may have to be started.

const QString noKey = QStringLiteral("Tavin: no copy key: ");
const QString remoteInterface = QStringLiteral("org.freedesktop.portal.RemoteDesktop");

// Another one each time: the desktop's own part of a portal outlives the portal, with its sessions.
QString newSessionToken() {
  static int count = 0;
  return QStringLiteral("tavin_keys_%1").arg(++count);
}

QDBusMessage keyCall(const QDBusObjectPath& session, const KeyStep& step) {
  QDBusMessage call = portalCall(remoteInterface, QStringLiteral("NotifyKeyboardKeycode"));
  call << QVariant::fromValue(session) << QVariantMap() << step.code << uint(step.down ? 1 : 0);
  return call;
}

}  // namespace

RemoteDesktop::RemoteDesktop(SystemLog& log, RestoreToken token)
    : log_(log),
      token_(std::move(token)),
      owners_(portalService, *bus_, QDBusServiceWatcher::WatchForUnregistration) {
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceUnregistered, &owners_,
                   [this] { portalLeft(); });
  closed_ = std::make_unique<bus::BusSignal>(
      *bus_, bus::BusSignal::Source{portalService, {}, sessionInterface, QStringLiteral("Closed")},
      [this](const QDBusMessage& signal) {
        if (signal.path() == session_.path())
          ended(QStringLiteral("the desktop or the user has ended it"));
      });
}

RemoteDesktop::~RemoteDesktop() = default;

std::optional<QDBusObjectPath> RemoteDesktop::sessionOrAsk() {
  const std::lock_guard lock(mutex_);
  if (state_ == State::open)
    return session_;
  if (state_ == State::closed) {
    state_ = State::asking;
    QMetaObject::invokeMethod(
        &owners_, [this] { ask(); }, Qt::QueuedConnection);
  }
  return std::nullopt;
}

// Each key waits for the answer to the one before: a portal serves its calls on several threads, so
// that keys which are under way together arrive in any order.
void RemoteDesktop::type(const QDBusObjectPath& session, const std::vector<KeyStep>& steps) {
  const Deadline deadline = Deadline::in(typingSeconds);
  for (const KeyStep& step : steps) {
    QDBusPendingCall call =
        bus_->asyncCall(keyCall(session, step), std::max(deadline.remainingMs(), 1));
    call.waitForFinished();
    if (call.isError())
      return letGo(session, steps);
  }
}

// What hangs may be done later, in any order: after the end of the session nothing goes down.
void RemoteDesktop::letGo(const QDBusObjectPath& session, const std::vector<KeyStep>& steps) {
  for (const KeyStep& step : steps) {
    if (!step.down)
      bus_->send(keyCall(session, step));
  }
  QMetaObject::invokeMethod(
      &owners_,
      [this, session] {
        if (session_ == session)
          giveUp(QStringLiteral("the portal presses no key"));
      },
      Qt::QueuedConnection);
}

void RemoteDesktop::ask() {
  log_.write(QStringLiteral("Tavin: asking the desktop for permission to press the copy key"));
  if (!bus_->isConnected())
    return giveUp(QStringLiteral("there is no session bus"));
  announceTo(*bus_);
  readOffer();
}

// The interface is there on desktops whose portal can do none of it, too.
void RemoteDesktop::readOffer() {
  QDBusMessage question =
      portalCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
  question << remoteInterface;
  auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(question, offerDeadline), &owners_);
  QObject::connect(
      reply, &QDBusPendingCallWatcher::finished, &owners_, [this](QDBusPendingCallWatcher* done) {
        done->deleteLater();
        const QDBusPendingReply<QVariantMap> offer = *done;
        const QVariantMap properties = offer.isError() ? QVariantMap() : offer.value();
        version_ = properties.value(QStringLiteral("version")).toUInt();
        const uint types = properties.value(QStringLiteral("AvailableDeviceTypes")).toUInt();
        if ((types & keyboardDevice) == 0)
          return giveUp(QStringLiteral("this desktop's portal has no keyboard now"));
        createSession();
      });
}

void RemoteDesktop::createSession() {
  call(QStringLiteral("CreateSession"), {},
       {{QStringLiteral("session_handle_token"), newSessionToken()}},
       [this](int code, const QVariantMap& results) {
         const QString handle = results.value(QStringLiteral("session_handle")).toString();
         if (code != succeeded || handle.isEmpty())
           return giveUp(QStringLiteral("the portal opens no session"));
         {
           const std::lock_guard lock(mutex_);
           session_ = QDBusObjectPath(handle);
         }
         selectDevices();
       });
}

void RemoteDesktop::selectDevices() {
  QVariantMap options{{QStringLiteral("types"), keyboardDevice}};
  if (version_ >= firstVersionThatRemembers) {
    options.insert(QStringLiteral("persist_mode"), untilRevoked);
    const QString token = token_.read();
    if (!token.isEmpty())
      options.insert(QStringLiteral("restore_token"), token);
  }
  call(QStringLiteral("SelectDevices"), {QVariant::fromValue(session_)}, options,
       [this](int code, const QVariantMap&) {
         if (code != succeeded)
           return giveUp(QStringLiteral("the portal selects no keyboard"));
         start();
       });
}

void RemoteDesktop::start() {
  dialogIsOpen_ = true;
  call(QStringLiteral("Start"), {QVariant::fromValue(session_), QString()}, {},
       [this](int code, const QVariantMap& results) {
         const uint devices = results.value(QStringLiteral("devices")).toUInt();
         if (code == succeeded && (devices & keyboardDevice) != 0)
           take(results);
         else if (code == succeeded || code == declined)
           decline();
         else
           ended(QStringLiteral("the desktop has not asked to the end"));
       });
}

void RemoteDesktop::take(const QVariantMap& results) {
  request_.reset();
  dialogIsOpen_ = false;
  questionsInVain_ = 0;
  const QString token = results.value(QStringLiteral("restore_token")).toString();
  if (!token.isEmpty())
    token_.store(token);
  log_.write(QStringLiteral("Tavin: the desktop lets Tavin press the copy key"));
  setState(State::open);
}

void RemoteDesktop::decline() {
  log_.write(
      QStringLiteral("Tavin: declined; programs that accessibility cannot read stay unread until "
                     "the next start"));
  closeSession();
  setState(State::refused);
}

void RemoteDesktop::call(const QString& method, QVariantList arguments, QVariantMap options,
                         Request::Answer answer) {
  request_ = std::make_unique<Request>(*bus_, remoteInterface, method, std::move(arguments),
                                       std::move(options), std::move(answer));
}

// The next need tries it again.
void RemoteDesktop::giveUp(const QString& reason) {
  log_.write(noKey + reason);
  closeSession();
  setState(State::closed);
}

// A dialog that was open has gone unanswered with it.
void RemoteDesktop::ended(const QString& reason) {
  if (!dialogIsOpen_ || ++questionsInVain_ < mostInVain)
    return giveUp(reason);
  log_.write(noKey + reason);
  decline();
}

void RemoteDesktop::portalLeft() {
  {
    const std::lock_guard lock(mutex_);
    session_ = {};
    const bool waits = state_ == State::asking && request_;
    if (!waits && state_ != State::open)
      return;
  }
  ended(QStringLiteral("the desktop's portal has ended"));
}

void RemoteDesktop::setState(State state) {
  const std::lock_guard lock(mutex_);
  state_ = state;
}

void RemoteDesktop::closeSession() {
  request_.reset();
  dialogIsOpen_ = false;
  const std::lock_guard lock(mutex_);
  portal::closeSession(*bus_, std::exchange(session_, {}));
}

}  // namespace tavin::portal
