#pragma once

#include <QDBusServiceWatcher>
#include <QPoint>
#include <functional>
#include <memory>

#include "platform/bus/SessionBus.h"
#include "platform/tray/TrayImage.h"

namespace tavin::tray {

class DBusMenu;
class MenuSource;
class StatusNotifierItem;

// The icon and its menu on the session bus, announced to org.kde.StatusNotifierWatcher whenever
// that has a new owner. Has a connection of its own, so that panels which know an icon by its
// connection see nothing else there. Main thread only.
class NotifierTray {
 public:
  // `watcherChanged` is called as soon as it is known whether there is a watcher, and at each
  // change: before the icon is announced, after it is gone. Without a session bus there is none.
  // `source` must outlive this object.
  NotifierTray(MenuSource& source, std::function<void(QPoint)> openMenu,
               std::function<void(bool)> watcherChanged);
  ~NotifierTray();
  NotifierTray(const NotifierTray&) = delete;
  NotifierTray& operator=(const NotifierTray&) = delete;

  // The first has the icon announced: at once where there is a watcher already, which may take a
  // tenth of a second to find out, else from the event loop.
  void setImage(const TrayImage& image, const QString& accessibilityDescription);

 private:
  void findWatcher();
  void awaitWatcher();
  void setWatcher(const QString& owner);
  void prepareFor(const QString& watcher, bool recolours);

  const bus::OwnConnection bus_{QStringLiteral("tray")};
  std::function<void(bool)> watcherChanged_;
  std::unique_ptr<StatusNotifierItem> item_;
  std::unique_ptr<DBusMenu> menu_;
  QDBusServiceWatcher owners_;
  bool sought_ = false;
  bool known_ = false;  // Whether the watcher's owner has been heard of at all.
  QString owner_;
};

}  // namespace tavin::tray
