#include "platform/tray/StatusNotifierTypes.h"

#include <QDBusMetaType>

namespace tavin::tray {

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
  argument.beginStructure();
  argument << pixmap.width << pixmap.height << pixmap.pixels;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
  argument.beginStructure();
  argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip) {
  argument.beginStructure();
  argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.text;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip) {
  argument.beginStructure();
  argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.text;
  argument.endStructure();
  return argument;
}

void registerStatusNotifierTypes() {
  qDBusRegisterMetaType<IconPixmap>();
  qDBusRegisterMetaType<QList<IconPixmap>>();
  qDBusRegisterMetaType<ToolTip>();
}

}  // namespace tavin::tray
