#pragma once

#include <QImage>
#include <QSystemTrayIcon>
#include <functional>
#include <optional>

namespace tavin::tray {
struct IconPixmap;
}

namespace tavin::widgets {

QImage pictureOf(const tray::IconPixmap& pixmap);

// The icon in an old-style tray, also one that starts later. Make it only while no
// StatusNotifierWatcher exists: Qt would register with that one too, by itself. Main thread only.
class XEmbedIcon {
 public:
  // `openMenu` is called for a click with either button.
  explicit XEmbedIcon(std::function<void()> openMenu);

  // A symbol of tray::trayImage(); another hides it.
  void setImage(const QString& symbol, const QString& toolTip);
  // Where a menu of that size hides nothing of the icon, if there is room; none while no tray shows
  // it.
  std::optional<QPoint> placeForMenu(const QSize& menu) const;

 private:
  QSystemTrayIcon icon_;
};

}  // namespace tavin::widgets
