#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "platform/SystemLog.h"
#include "platform/capture/Capture.h"

namespace tavin::windows {
class WindowSystem;
}
namespace tavin::copy {
class CopyKey;
}
namespace tavin::gnome {
class HeldModifiers;
}
namespace tavin::wayland {
class Compositor;
}

namespace tavin {

// What serves in this session, chosen by what it really offers: each service on its own, so that
// one that is missing takes no other away. For tests and for sessions that offer more than works,
// TAVIN_CLIPBOARD ("data-control", "x11"), TAVIN_KEYBOARD ("virtual-keyboard", "fake-input",
// "portal", "xtest", "none") and TAVIN_WINDOWS ("compositor", "x11") force one each.
class DesktopServices {
 public:
  // Looks round; bounded by seven seconds, of which a session that answers takes next to none.
  // Before Qt is started.
  DesktopServices();
  ~DesktopServices();

  // Why nothing can be shown here, in one line; empty where it can.
  QByteArray obstacle() const;
  bool isWaylandSession() const { return compositor_ || xwayland_; }
  // Qt's plug-in for this session.
  const char* qtPlatform() const;

  // None where a service that must be there is not. `log` must outlive it. Once, after Qt is
  // started.
  std::optional<capture::Capture> createCapture(SystemLog& log);
  // Rings where no sound can be played.
  std::function<void()> displayBell() const;
  // To be told of each press of a shortcut; null where nobody needs to know.
  std::shared_ptr<gnome::HeldModifiers> heldModifiers() const { return heldModifiers_; }
  // What was chosen, in one line.
  QString description() const;

 private:
  bool isKwin() const;
  std::unique_ptr<windows::WindowSystem> createWindows() const;
  std::unique_ptr<copy::CopyKey> createKey(SystemLog& log);
  std::unique_ptr<copy::CopyKey> createKey(const QString& kind, SystemLog& log) const;
  std::unique_ptr<copy::CopyKey> createPortalKey(SystemLog& log) const;

  const std::shared_ptr<wayland::Compositor> compositor_;  // Null where X11 serves.
  const bool qtSpeaksWayland_;                             // Its plug-in is installed.
  const bool display_;                                     // There is an X display, and a need.
  const bool wayland_;            // There is a compositor, with or without data control.
  const bool xwayland_;           // The X display is that of a compositor without data control.
  QString clipboard_, keyboard_;  // Of keyboards at first all that come into question.
  const QString windows_;
  std::shared_ptr<gnome::HeldModifiers> heldModifiers_;
};

}  // namespace tavin
