#include "platform/tray/NotifierTray.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <utility>

#include "platform/tray/DBusMenu.h"
#include "platform/tray/MenuSource.h"
#include "platform/tray/StatusNotifierItem.h"

namespace tavin::tray {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");

}  // namespace

NotifierTray::NotifierTray(MenuSource& source, std::function<void(QPoint)> openMenu,
                           std::function<void(bool)> watcherChanged)
    : watcherChanged_(std::move(watcherChanged)),
      item_(std::make_unique<StatusNotifierItem>(*bus_, std::move(openMenu))),
      menu_(std::make_unique<DBusMenu>(*bus_, source)),
      owners_(watcherName, *bus_) {
  QObject::connect(
      &owners_, &QDBusServiceWatcher::serviceOwnerChanged, &owners_,
      [this](const QString&, const QString&, const QString& owner) { setWatcher(owner); });
  if (bus_->isConnected())
    findWatcher();
  else
    QTimer::singleShot(0, &owners_, [this] { setWatcher({}); });
}

NotifierTray::~NotifierTray() = default;

void NotifierTray::setImage(const TrayImage& image, const QString& accessibilityDescription) {
  item_->setImage(image, accessibilityDescription);
}

void NotifierTray::findWatcher() {
  QDBusMessage call = QDBusMessage::createMethodCall(
      "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner");
  call << watcherName;
  auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(call), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this](QDBusPendingCallWatcher* done) {
                     const QDBusPendingReply<QString> answer = *done;
                     // A change that came meanwhile is the newer news.
                     if (!known_)
                       setWatcher(answer.isError() ? QString() : answer.value());
                     done->deleteLater();
                   });
}

void NotifierTray::setWatcher(const QString& owner) {
  known_ = true;
  watcherChanged_(!owner.isEmpty());
  if (owner.isEmpty())
    return;
  item_->registerWith(owner);
  menu_->prepare();
}

}  // namespace tavin::tray
