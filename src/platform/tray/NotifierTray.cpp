#include "platform/tray/NotifierTray.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <string>
#include <utility>

#include "platform/posix/ProcessFolder.h"
#include "platform/tray/DBusMenu.h"
#include "platform/tray/MenuSource.h"
#include "platform/tray/StatusNotifierItem.h"

namespace tavin::tray {

namespace {

constexpr double askSeconds = 0.1;
const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");

QDBusMessage toDaemon(const QString& method, const QString& name) {
  QDBusMessage call = QDBusMessage::createMethodCall(
      "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method);
  return call << name;
}

// Whether the panel with this watcher draws symbolic icons in the colour of its own text: those of
// GNOME, Plasma and Xfce were seen to. Where that is a wrong guess the icon is a grey that is hard
// to see, so any other panel gets pixels.
bool recoloursIcons(pid_t watcher) {
  const std::string name = posix::ProcessFolder(watcher).name();
  return name == "gnome-shell" || name == "kded5" || name == "kded6" ||
         // "panel-3-systray", which may be cut off.
         (name.starts_with("panel-") && name.find("-systr") != std::string::npos);
}

}  // namespace

NotifierTray::NotifierTray(MenuSource& source, std::function<void(QPoint)> openMenu,
                           std::function<void(bool)> watcherChanged)
    : watcherChanged_(std::move(watcherChanged)),
      item_(std::make_unique<StatusNotifierItem>(*bus_, std::move(openMenu))),
      menu_(std::make_unique<DBusMenu>(*bus_, source)),
      owners_(watcherName, *bus_) {
  QObject::connect(&owners_, &QDBusServiceWatcher::serviceOwnerChanged, &owners_,
                   [this](const QString&, const QString&, const QString& owner) {
                     // The answer to our own question may have told it already.
                     if (!known_ || owner != owner_)
                       setWatcher(owner);
                   });
}

NotifierTray::~NotifierTray() = default;

void NotifierTray::setImage(const TrayImage& image, const QString& accessibilityDescription) {
  item_->setImage(image, accessibilityDescription);
  if (!known_ && !std::exchange(sought_, true))
    findWatcher();
}

// Launch has the engine and the shortcuts to wait for before it comes to the event loop: a panel
// that is there already can make room for the icon meanwhile.
void NotifierTray::findWatcher() {
  if (!bus_->isConnected()) {
    QTimer::singleShot(0, &owners_, [this] { setWatcher({}); });
    return;
  }
  const QString owner = bus::askBusDaemon(*bus_, QStringLiteral("GetNameOwner"), watcherName,
                                          Deadline::in(askSeconds))
                            .toString();
  if (owner.isEmpty())
    awaitWatcher();
  else
    setWatcher(owner);
}

void NotifierTray::awaitWatcher() {
  auto* reply =
      new QDBusPendingCallWatcher(bus_->asyncCall(toDaemon("GetNameOwner", watcherName)), &owners_);
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
  owner_ = owner;
  watcherChanged_(!owner.isEmpty());
  if (owner.isEmpty())
    return;
  // As a rule answered before the panel, which hears of the icon later, asks for its looks.
  auto* reply = new QDBusPendingCallWatcher(
      bus_->asyncCall(toDaemon("GetConnectionUnixProcessID", owner)), &owners_);
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, &owners_,
                   [this, owner](QDBusPendingCallWatcher* done) {
                     const QDBusPendingReply<uint> answer = *done;
                     prepareFor(owner, !answer.isError() && recoloursIcons(answer.value()));
                     done->deleteLater();
                   });
  item_->registerWith(owner);
}

void NotifierTray::prepareFor(const QString& watcher, bool recolours) {
  if (watcher != owner_)
    return;  // Another has come meanwhile.
  item_->setRecoloured(recolours);
  menu_->prepare();
}

}  // namespace tavin::tray
