#include "platform/tray/StatusNotifierItem.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "platform/ActivationToken.h"
#include "platform/desktop/DesktopName.h"
#include "platform/tray/DBusMenu.h"
#include "platform/tray/Introspection.h"
#include "platform/tray/StatusNotifierTypes.h"

namespace tavin::tray {

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus,
                                       std::function<void(QPoint)> openMenu)
    : bus::BusObject(bus, QLatin1String(path), "org.kde.StatusNotifierItem",
                     QLatin1String(statusNotifierItemDescription)),
      openMenu_(std::move(openMenu)) {
  registerStatusNotifierTypes();
  const auto open = [this](const QVariantList& arguments) {
    openMenu_(QPoint(arguments.at(0).toInt(), arguments.at(1).toInt()));
    return QVariantList{};
  };
  const auto ignore = [](const QVariantList&) { return QVariantList{}; };
  const auto refuse = [](const QVariantList&) { return std::nullopt; };
  // Plasma asks for this even of an icon that is but a menu; refused, it shows the menu under it.
  const bool panelHasMenu = desktop::currentDesktops().contains(QLatin1String("KDE"));
  addMethod("Activate", "ii", panelHasMenu ? Handler(refuse) : Handler(open));
  addMethod("ContextMenu", "ii", open);
  addMethod("SecondaryActivate", "ii", ignore);
  addMethod("Scroll", "is", ignore);
  addMethod("ProvideXdgActivationToken", "s", [](const QVariantList& arguments) {
    keepActivationToken(arguments.at(0).toString());
    return QVariantList{};
  });
}

void StatusNotifierItem::setImage(const TrayImage& image, const QString& accessibilityDescription) {
  const bool toolTipChanges =
      description_ != accessibilityDescription || image_.state != image.state;
  image_ = image;
  description_ = accessibilityDescription;
  emitSignal("NewIcon");
  if (toolTipChanges)
    emitSignal("NewToolTip");
}

void StatusNotifierItem::setRecoloured(bool recolours) {
  // A panel may have asked for the looks before this was known.
  if (std::exchange(recolours_, recolours) != recolours)
    emitSignal("NewIcon");
}

void StatusNotifierItem::registerWith(const QString& watcher) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(watcher, "/StatusNotifierWatcher",
                                     "org.kde.StatusNotifierWatcher", "RegisterStatusNotifierItem");
  call << bus().baseService();
  auto* reply = new QDBusPendingCallWatcher(bus().asyncCall(call), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* done) {
    const QDBusPendingReply<> answer = *done;
    if (answer.isError())
      qWarning("Tavin: the panel refused the icon: %s", qPrintable(answer.error().message()));
    done->deleteLater();
  });
}

QVariantMap StatusNotifierItem::properties() const {
  const QVariant none = QVariant::fromValue(QList<IconPixmap>());
  return {
      {"Category", "ApplicationStatus"},
      {"Id", "tavin"},
      {"Title", "Tavin"},
      {"Status", "Active"},
      {"WindowId", 0},
      {"IconThemePath", iconThemePath()},
      {"Menu", QVariant::fromValue(QDBusObjectPath(DBusMenu::path))},
      {"ItemIsMenu", true},
      {"IconName", recolours_ ? image_.iconName : QString()},
      {"IconPixmap", QVariant::fromValue(image_.pixmaps)},
      {"IconAccessibleDesc", description_},
      {"OverlayIconName", ""},
      {"OverlayIconPixmap", none},
      {"AttentionIconName", ""},
      {"AttentionIconPixmap", none},
      {"AttentionMovieName", ""},
      {"AttentionAccessibleDesc", ""},
      {"ToolTip", QVariant::fromValue(ToolTip{{}, {}, description_, image_.state})},
  };
}

}  // namespace tavin::tray
