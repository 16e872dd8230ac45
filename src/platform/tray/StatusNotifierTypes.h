#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QString>

namespace tavin::tray {

// The structures of org.kde.StatusNotifierItem, as they travel.

struct IconPixmap {  // (iiay): ARGB, 32 bits, network byte order, rows from the top.
  int width = 0;
  int height = 0;
  QByteArray pixels;
};

struct ToolTip {  // (sa(iiay)ss)
  QString iconName;
  QList<IconPixmap> iconPixmap;
  QString title;
  QString text;
};

IconPixmap iconPixmap(const QImage& image);

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);

// Makes them known to QtDBus; harmless when repeated.
void registerStatusNotifierTypes();

}  // namespace tavin::tray

Q_DECLARE_METATYPE(tavin::tray::IconPixmap)
Q_DECLARE_METATYPE(tavin::tray::ToolTip)
