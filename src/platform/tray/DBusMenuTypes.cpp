#include "platform/tray/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace tavin::tray {

QDBusArgument& operator<<(QDBusArgument& argument, const LayoutItem& item) {
  argument.beginStructure();
  argument << item.id << item.properties;
  argument.beginArray(QMetaType::fromType<QDBusVariant>());
  for (const LayoutItem& child : item.children)
    argument << QDBusVariant(QVariant::fromValue(child));
  argument.endArray();
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, LayoutItem& item) {
  item.children.clear();
  argument.beginStructure();
  argument >> item.id >> item.properties;
  argument.beginArray();
  while (!argument.atEnd()) {
    QDBusVariant child;
    argument >> child;
    item.children.append(qdbus_cast<LayoutItem>(child.variant()));
  }
  argument.endArray();
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemProperties& item) {
  argument.beginStructure();
  argument << item.id << item.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemProperties& item) {
  argument.beginStructure();
  argument >> item.id >> item.properties;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const RemovedProperties& item) {
  argument.beginStructure();
  argument << item.id << item.names;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RemovedProperties& item) {
  argument.beginStructure();
  argument >> item.id >> item.names;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
  argument.beginStructure();
  argument << event.id << event.name << event.data << event.timestamp;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
  argument.beginStructure();
  argument >> event.id >> event.name >> event.data >> event.timestamp;
  argument.endStructure();
  return argument;
}

void registerDBusMenuTypes() {
  qDBusRegisterMetaType<LayoutItem>();
  qDBusRegisterMetaType<ItemProperties>();
  qDBusRegisterMetaType<QList<ItemProperties>>();
  qDBusRegisterMetaType<RemovedProperties>();
  qDBusRegisterMetaType<QList<RemovedProperties>>();
  qDBusRegisterMetaType<MenuEvent>();
  qDBusRegisterMetaType<QList<MenuEvent>>();
  qDBusRegisterMetaType<QList<int>>();
}

}  // namespace tavin::tray
