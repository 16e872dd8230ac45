#include "FakePortal.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QStringList>

namespace tavin::test {
namespace {

const QString connectionName = QStringLiteral("fake-portal");
const QString serviceName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

QString pathFor(const char* kind, const QDBusMessage& call, const QString& token) {
  return objectPath + QLatin1Char('/') + QLatin1String(kind) + QLatin1Char('/') +
         call.service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_')) + QLatin1Char('/') +
         token;
}

}  // namespace

portal::Shortcut withKey(const QString& id, const QString& key) {
  return {id, {{QStringLiteral("trigger_description"), key}}};
}

FakePortal::FakePortal()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {
  bus_.registerVirtualObject(objectPath, this, QDBusConnection::SubPath);
  EXPECT_TRUE(bus_.registerService(serviceName)) << "another portal runs in this session";
}

FakePortal::~FakePortal() {
  bus_.unregisterService(serviceName);
  QDBusConnection::disconnectFromBus(connectionName);
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  if (message.member() == QLatin1String("Register")) {
    calls << QStringLiteral("Register ") + message.arguments().value(0).toString();
    bus_.send(message.createReply());
    return true;
  }
  calls << message.member();
  if (!hasShortcuts)
    return false;
  if (message.member() == QLatin1String("Close")) {
    session.clear();
    bus_.send(message.createReply());
    return true;
  }
  const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
  bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(
      pathFor("request", message, options.value(QStringLiteral("handle_token")).toString())))));
  answer(message, options);
  return true;
}

void FakePortal::answer(const QDBusMessage& call, const QVariantMap& options) {
  const QString request =
      pathFor("request", call, options.value(QStringLiteral("handle_token")).toString());
  if (call.member() == QLatin1String("CreateSession")) {
    EXPECT_TRUE(session.isEmpty()) << "a second session of the same name";
    session =
        pathFor("session", call, options.value(QStringLiteral("session_handle_token")).toString());
    return respond(request, 0, {{QStringLiteral("session_handle"), session}});
  }
  EXPECT_EQ(call.arguments().value(0).value<QDBusObjectPath>().path(), session);
  if (call.member() == QLatin1String("ListShortcuts"))
    return respond(request, 0, {{QStringLiteral("shortcuts"), portal::toArgument(remembered)}});
  lastBind = qdbus_cast<QList<portal::Shortcut>>(call.arguments().value(1));
  if (dialogStaysOpen)
    return;
  QList<portal::Shortcut> given;
  for (const portal::Shortcut& wanted : lastBind) given << withKey(wanted.id, bindGivesKey);
  QVariantMap results;
  if (bindTellsShortcuts)
    results.insert(QStringLiteral("shortcuts"), portal::toArgument(given));
  respond(request, bindCode, results);
}

void FakePortal::respond(const QString& request, int code, const QVariantMap& results) {
  emitSignal(request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
             {static_cast<uint>(code), oddResults.isValid() ? oddResults : results});
}

void FakePortal::activate(const QString& id, const QVariantMap& options) {
  emitSignal(objectPath, shortcutsInterface, QStringLiteral("Activated"),
             {QVariant::fromValue(QDBusObjectPath(session)), id, qulonglong{1}, options});
}

void FakePortal::deactivate(const QString& id) {
  emitSignal(objectPath, shortcutsInterface, QStringLiteral("Deactivated"),
             {QVariant::fromValue(QDBusObjectPath(session)), id, qulonglong{2}, QVariantMap()});
}

void FakePortal::closeSession() {
  const QString closed = std::exchange(session, {});
  emitSignal(closed, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"),
             {});
}

void FakePortal::emitSignal(const QString& path, const QString& interface, const QString& name,
                            const QVariantList& arguments) {
  QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
  signal.setArguments(arguments);
  bus_.send(signal);
}

}  // namespace tavin::test
