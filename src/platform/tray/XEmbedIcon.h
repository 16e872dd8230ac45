#pragma once

#include <QSystemTrayIcon>
#include <functional>

#include "platform/tray/TrayImage.h"

namespace tavin::tray {

// The icon in an old-style tray, also one that starts later. Make it only while no
// StatusNotifierWatcher exists: Qt would register with that one too, by itself. Main thread only.
class XEmbedIcon {
 public:
  // `openMenu` is called for a click with either button.
  explicit XEmbedIcon(std::function<void()> openMenu);

  void setImage(const TrayImage& image, const QString& accessibilityDescription);

 private:
  QSystemTrayIcon icon_;
};

}  // namespace tavin::tray
