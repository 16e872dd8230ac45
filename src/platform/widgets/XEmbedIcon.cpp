#include "platform/widgets/XEmbedIcon.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QtEndian>
#include <utility>

#include "platform/tray/TrayImage.h"

namespace tavin::widgets {

QImage pictureOf(const tray::IconPixmap& pixmap) {
  QImage picture(pixmap.width, pixmap.height, QImage::Format_ARGB32);
  const qsizetype line = qsizetype{4} * pixmap.width;
  for (int y = 0; y < pixmap.height; ++y)
    qFromBigEndian<quint32>(pixmap.pixels.constData() + y * line, pixmap.width,
                            picture.scanLine(y));
  return picture;
}

XEmbedIcon::XEmbedIcon(std::function<void()> openMenu) {
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                   [openMenu = std::move(openMenu)](QSystemTrayIcon::ActivationReason reason) {
                     // The second of two quick clicks comes as a double click.
                     if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context ||
                         reason == QSystemTrayIcon::DoubleClick)
                       openMenu();
                   });
}

void XEmbedIcon::setImage(const QString& symbol, const QString& toolTip) {
  QIcon icon;
  for (const tray::IconPixmap& pixmap : tray::trayImage(symbol).pixmaps)
    icon.addPixmap(QPixmap::fromImage(pictureOf(pixmap)));
  icon_.setIcon(icon);
  icon_.setToolTip(toolTip);
  icon_.setVisible(!icon.isNull());
}

std::optional<QPoint> XEmbedIcon::placeForMenu(const QSize& menu) const {
  const QRect icon = icon_.geometry();
  const QScreen* screen = QGuiApplication::screenAt(icon.center());
  if (icon.isEmpty() || screen == nullptr)
    return std::nullopt;
  const int below = icon.y() + icon.height();
  const bool fitsBelow = below + menu.height() <= screen->geometry().bottom();
  return QPoint(icon.x(), fitsBelow ? below : icon.y() - menu.height());
}

}  // namespace tavin::widgets
