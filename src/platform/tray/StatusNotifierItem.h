#pragma once

#include <QPoint>
#include <functional>

#include "platform/bus/BusObject.h"
#include "platform/tray/TrayImage.h"

namespace tavin::tray {

// The icon as freedesktop's StatusNotifierItem, drawn by the panel. Main thread only.
class StatusNotifierItem final : public bus::BusObject {
 public:
  static constexpr auto path = "/StatusNotifierItem";

  // `openMenu` is called with a point of the screen by panels that leave the menu to us.
  StatusNotifierItem(const QDBusConnection& bus, std::function<void(QPoint)> openMenu);

  void setImage(const TrayImage& image, const QString& accessibilityDescription);
  // Tells the watcher about the icon. A refusal is logged.
  void registerWith(const QString& watcher);
  // A panel that does not recolour icons is given none by name.
  void setRecoloured(bool recolours);

 protected:
  QVariantMap properties() const override;

 private:
  std::function<void(QPoint)> openMenu_;
  TrayImage image_;
  QString description_;
  bool recolours_ = false;
};

}  // namespace tavin::tray
