#include "FakePanel.h"

#include <gtest/gtest.h>

#include <QDBusPendingCall>

#include "TestApplication.h"

namespace tavin::test {

namespace {
const QString connectionName = QStringLiteral("fake-panel");
const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
}  // namespace

FakePanel::FakePanel()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {
  tray::registerDBusMenuTypes();
  for (const char* interface : {"org.kde.StatusNotifierItem", "com.canonical.dbusmenu"})
    bus_.connect({}, {}, interface, {}, this, SLOT(noteSignal(QDBusMessage)));
  bus_.registerVirtualObject("/StatusNotifierWatcher", this);
  EXPECT_TRUE(bus_.registerService(watcherName)) << "another panel runs in this session";
}

FakePanel::~FakePanel() {
  bus_.unregisterService(watcherName);
  QDBusConnection::disconnectFromBus(connectionName);
}

bool FakePanel::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.member() != QLatin1String("RegisterStatusNotifierItem"))
    return false;
  registered.append(message.arguments().value(0).toString());
  connection.send(message.createReply());
  return true;
}

void FakePanel::noteSignal(const QDBusMessage& message) { signalNames.append(message.member()); }

QDBusMessage FakePanel::call(const QDBusMessage& message) {
  const QDBusPendingCall pending = bus_.asyncCall(message);
  EXPECT_TRUE(waitFor([&] { return pending.isFinished(); })) << qPrintable(message.member());
  return pending.reply();
}

QVariant FakePanel::itemProperty(const QString& service, const QString& name) {
  QDBusMessage message = QDBusMessage::createMethodCall(service, "/StatusNotifierItem",
                                                        "org.freedesktop.DBus.Properties", "Get");
  message << "org.kde.StatusNotifierItem" << name;
  const QDBusMessage reply = call(message);
  EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
  return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QDBusMessage FakePanel::callItem(const QString& service, const QString& method,
                                 const QVariantList& args) {
  QDBusMessage message = QDBusMessage::createMethodCall(service, "/StatusNotifierItem",
                                                        "org.kde.StatusNotifierItem", method);
  message.setArguments(args);
  return call(message);
}

QDBusMessage FakePanel::callMenu(const QString& service, const QString& method,
                                 const QVariantList& args) {
  QDBusMessage message =
      QDBusMessage::createMethodCall(service, "/MenuBar", "com.canonical.dbusmenu", method);
  message.setArguments(args);
  return call(message);
}

tray::LayoutItem FakePanel::layout(const QString& service, int parent, int depth,
                                   const QStringList& names) {
  const QDBusMessage reply = callMenu(service, "GetLayout", {parent, depth, names});
  EXPECT_EQ(reply.signature(), "u(ia{sv}av)") << qPrintable(reply.errorMessage());
  return qdbus_cast<tray::LayoutItem>(reply.arguments().value(1));
}

QList<tray::LayoutItem> FakePanel::open(const QString& service) {
  const QDBusMessage reply =
      callMenu(service, "AboutToShowGroup", {QVariant::fromValue(QList<int>{0})});
  EXPECT_EQ(reply.signature(), "aiai") << qPrintable(reply.errorMessage());
  QList<tray::LayoutItem> shown;
  for (const tray::LayoutItem& item : layout(service).children)
    if (item.properties.value("visible").toBool())
      shown.append(item);
  return shown;
}

void FakePanel::click(const QString& service, int id) {
  callMenu(service, "Event",
           {id, "clicked", QVariant::fromValue(QDBusVariant(QString())), QVariant(0U)});
}

}  // namespace tavin::test
