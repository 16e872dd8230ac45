#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QString>

namespace tavin::portal {

// What all interfaces of the desktop's portal have in common.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

// A call of the portal's one object.
QDBusMessage portalCall(const QString& interface, const QString& method);

// A program outside of a sandbox says who it is, before anything else. A portal that cannot be told
// finds out itself.
void announceTo(const QDBusConnection& bus);

// Does nothing where the path is empty.
void closeSession(const QDBusConnection& bus, const QDBusObjectPath& session);

}  // namespace tavin::portal
