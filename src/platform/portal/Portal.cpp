#include "platform/portal/Portal.h"

#include <QVariantMap>

namespace tavin::portal {

QDBusMessage portalCall(const QString& interface, const QString& method) {
  return QDBusMessage::createMethodCall(
      portalService, QStringLiteral("/org/freedesktop/portal/desktop"), interface, method);
}

void announceTo(const QDBusConnection& bus) {
  QDBusMessage announcement = portalCall(QStringLiteral("org.freedesktop.host.portal.Registry"),
                                         QStringLiteral("Register"));
  announcement << QStringLiteral("app.tavin.Tavin") << QVariantMap();
  bus.send(announcement);
}

void closeSession(const QDBusConnection& bus, const QDBusObjectPath& session) {
  if (!session.path().isEmpty())
    bus.send(QDBusMessage::createMethodCall(portalService, session.path(), sessionInterface,
                                            QStringLiteral("Close")));
}

}  // namespace tavin::portal
