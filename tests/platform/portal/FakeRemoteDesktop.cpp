#include "FakeRemoteDesktop.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QTimer>
#include <utility>

namespace tavin::test {
namespace {

const QString fakeName = QStringLiteral("fake-remote-desktop");
const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
constexpr int threadsMilliseconds = 5;  // Time for all keys that are sent together to be there.
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

QString pathOf(const char* kind, const QDBusMessage& call, const QString& token) {
  return portalPath + u'/' + QLatin1String(kind) + u'/' +
         call.service().mid(1).replace(u'.', u'_') + u'/' + token;
}

}  // namespace

FakeRemoteDesktop::FakeRemoteDesktop()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, fakeName)) {
  bus_.registerVirtualObject(portalPath, this, QDBusConnection::SubPath);
  comeBack();
}

FakeRemoteDesktop::~FakeRemoteDesktop() {
  leave();
  QDBusConnection::disconnectFromBus(fakeName);
}

void FakeRemoteDesktop::leave() {
  bus_.unregisterService(portalName);
  session.clear();
  dialog_.clear();
}

void FakeRemoteDesktop::comeBack() {
  EXPECT_TRUE(bus_.registerService(portalName)) << "another portal runs in this session";
}

bool FakeRemoteDesktop::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  const QString method = message.member();
  if (method == QLatin1String("GetAll"))
    return bus_.send(
        message.createReply(QVariantMap{{QStringLiteral("version"), version},
                                        {QStringLiteral("AvailableDeviceTypes"), deviceTypes}}));
  if (method == QLatin1String("Register"))
    return false;  // As the older ones do.
  if (method == QLatin1String("NotifyKeyboardKeycode")) {
    underWay_.prepend(message);
    if (!keysHang)
      QTimer::singleShot(threadsMilliseconds, this, [this] { takeKeys(); });
    return true;
  }
  calls << method;
  if (method == QLatin1String("Close")) {
    session.clear();
    return bus_.send(message.createReply());
  }
  const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
  const QString request =
      pathOf("request", message, options.value(QStringLiteral("handle_token")).toString());
  bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
  dialog_ = request;
  answer(message, options);
  return true;
}

void FakeRemoteDesktop::takeKeys() {
  for (const QDBusMessage& message : std::exchange(underWay_, {})) {
    if (message.arguments().value(0).value<QDBusObjectPath>().path() != session) {
      bus_.send(message.createErrorReply(QDBusError::AccessDenied, "no session"));
      continue;
    }
    keys << QString::number(message.arguments().value(2).toInt()) +
                (message.arguments().value(3).toUInt() != 0 ? " down" : " up");
    bus_.send(message.createReply());
  }
}

void FakeRemoteDesktop::answer(const QDBusMessage& call, const QVariantMap& options) {
  const auto respond = [this](const QVariantMap& results) {
    emitSignal(dialog_, QStringLiteral("org.freedesktop.portal.Request"),
               QStringLiteral("Response"), {0U, results});
  };
  if (call.member() == QLatin1String("CreateSession")) {
    session =
        pathOf("session", call, options.value(QStringLiteral("session_handle_token")).toString());
    EXPECT_FALSE(sessions_.contains(session)) << "a second session of the same name";
    sessions_ << session;
    return respond({{QStringLiteral("session_handle"), session}});
  }
  if (call.member() == QLatin1String("SelectDevices")) {
    selection = options;
    return respond({});
  }
  if (!dialogStaysOpen)
    answerDialog();
}

void FakeRemoteDesktop::answerDialog() {
  QVariantMap results{{QStringLiteral("devices"), answerDevices}};
  if (!answerToken.isEmpty())
    results.insert(QStringLiteral("restore_token"), answerToken);
  emitSignal(std::exchange(dialog_, {}), QStringLiteral("org.freedesktop.portal.Request"),
             QStringLiteral("Response"),
             {static_cast<uint>(answerCode), answerCode == 0 ? results : QVariantMap()});
}

void FakeRemoteDesktop::closeSession() {
  emitSignal(std::exchange(session, {}), QStringLiteral("org.freedesktop.portal.Session"),
             QStringLiteral("Closed"), {});
}

void FakeRemoteDesktop::emitSignal(const QString& path, const QString& interface,
                                   const QString& name, const QVariantList& arguments) {
  QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
  signal.setArguments(arguments);
  bus_.send(signal);
}

}  // namespace tavin::test
