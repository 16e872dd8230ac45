#pragma once

#include <QGuiApplication>

namespace tavin::widgets {

// Whether Qt shows the windows on Wayland, whatever else the session has.
inline bool isOnWayland() {
  return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

}  // namespace tavin::widgets
