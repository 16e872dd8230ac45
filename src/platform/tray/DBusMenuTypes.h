#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QVariantMap>

namespace tavin::tray {

// The structures of com.canonical.dbusmenu, as they travel.

struct LayoutItem {  // (ia{sv}av)
  int id = 0;
  QVariantMap properties;
  QList<LayoutItem> children;
};

struct ItemProperties {  // (ia{sv})
  int id = 0;
  QVariantMap properties;
};

struct RemovedProperties {  // (ias)
  int id = 0;
  QStringList names;
};

struct MenuEvent {  // (isvu)
  int id = 0;
  QString name;
  QDBusVariant data;
  uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const LayoutItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, LayoutItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const RemovedProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, RemovedProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

// Makes them known to QtDBus; harmless when repeated.
void registerDBusMenuTypes();

}  // namespace tavin::tray

Q_DECLARE_METATYPE(tavin::tray::LayoutItem)
Q_DECLARE_METATYPE(tavin::tray::ItemProperties)
Q_DECLARE_METATYPE(tavin::tray::RemovedProperties)
Q_DECLARE_METATYPE(tavin::tray::MenuEvent)
