#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

#include "platform/tray/TrayImage.h"

namespace tavin::tray {

// The structures of org.kde.StatusNotifierItem, as they travel, beside the pixmaps.

struct ToolTip {  // (sa(iiay)ss)
  QString iconName;
  QList<IconPixmap> iconPixmap;
  QString title;
  QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);

// Makes them known to QtDBus; harmless when repeated.
void registerStatusNotifierTypes();

}  // namespace tavin::tray

Q_DECLARE_METATYPE(tavin::tray::IconPixmap)
Q_DECLARE_METATYPE(tavin::tray::ToolTip)
