#include "platform/tray/XEmbedIcon.h"

#include <QPixmap>
#include <utility>

namespace tavin::tray {

XEmbedIcon::XEmbedIcon(std::function<void()> openMenu) {
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                   [openMenu = std::move(openMenu)](QSystemTrayIcon::ActivationReason reason) {
                     // The second of two quick clicks comes as a double click.
                     if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context ||
                         reason == QSystemTrayIcon::DoubleClick)
                       openMenu();
                   });
}

void XEmbedIcon::setImage(const TrayImage& image, const QString& accessibilityDescription) {
  QIcon icon;
  for (const QImage& pixmap : image.pixmaps) icon.addPixmap(QPixmap::fromImage(pixmap));
  icon_.setIcon(icon);
  icon_.setToolTip(accessibilityDescription + '\n' + image.state);
  icon_.setVisible(!icon.isNull());
}

}  // namespace tavin::tray
