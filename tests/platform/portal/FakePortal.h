#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <optional>

#include "platform/portal/Shortcut.h"

namespace tavin::test {

// A desktop portal on the session bus that does what the test tells it to.
class FakePortal : public QDBusVirtualObject {
 public:
  FakePortal();
  ~FakePortal() override;

  // What is remembered from earlier, as ids with keys; a key may be empty.
  QList<portal::Shortcut> remembered;
  // What the dialog ends with: its code, and the keys it gives, or nothing for no list at all.
  int bindCode = 0;
  bool bindTellsShortcuts = true;
  QString bindGivesKey = QStringLiteral("Press <Alt>Escape");
  bool dialogStaysOpen = false;

  bool hasShortcuts = true;
  QVariant oddResults;  // Where it is valid, what all requests are answered with, of any type.

  QStringList calls;                 // In order: the methods, Register with the id it was given.
  QList<portal::Shortcut> lastBind;  // What was asked for.
  QString session;                   // The path of the open one; empty where there is none.

  void activate(const QString& id, const QVariantMap& options = {});
  void deactivate(const QString& id);
  void closeSession();

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void answer(const QDBusMessage& call, const QVariantMap& options);
  void respond(const QString& request, int code, const QVariantMap& results);
  void emitSignal(const QString& path, const QString& interface, const QString& name,
                  const QVariantList& arguments);

  QDBusConnection bus_;
};

portal::Shortcut withKey(const QString& id, const QString& key);

}  // namespace tavin::test
