#include "platform/tray/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace tavin::tray {

IconPixmap iconPixmap(const QImage& image) {
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
  const qsizetype line = qsizetype{4} * argb.width();
  IconPixmap pixmap{argb.width(), argb.height(), QByteArray(line * argb.height(), 0)};
  for (int y = 0; y < argb.height(); ++y)
    qToBigEndian<quint32>(argb.constScanLine(y), argb.width(), pixmap.pixels.data() + y * line);
  return pixmap;
}

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
