#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

#include "platform/tray/DBusMenuTypes.h"

namespace tavin::test {

// A panel on the session bus: a StatusNotifierWatcher that notes who registers, and the calls that
// panels make. Each call runs the event loop until it is answered.
class FakePanel : public QDBusVirtualObject {
  Q_OBJECT
 public:
  FakePanel();
  ~FakePanel() override;

  QStringList registered;   // What was handed to RegisterStatusNotifierItem.
  QStringList signalNames;  // Signals of icons and their menus, in order.

  QVariant itemProperty(const QString& service, const QString& name);
  QDBusMessage callItem(const QString& service, const QString& method, const QVariantList& args);
  QDBusMessage callMenu(const QString& service, const QString& method, const QVariantList& args);
  tray::LayoutItem layout(const QString& service, int parent = 0, int depth = -1,
                          const QStringList& names = {});
  // As GTK's panels announce an opening; the lines that are shown then.
  QList<tray::LayoutItem> open(const QString& service);
  void click(const QString& service, int id);

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  Q_SLOT void noteSignal(const QDBusMessage& message);

 private:
  QDBusMessage call(const QDBusMessage& message);

  QDBusConnection bus_;
};

}  // namespace tavin::test
