#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

namespace tavin::test {

// A portal on the session bus that lets programs press keys as the test tells it to. Of keys that
// are under way together the last is taken first: a portal has several threads.
class FakeRemoteDesktop : public QDBusVirtualObject {
 public:
  FakeRemoteDesktop();
  ~FakeRemoteDesktop() override;

  uint version = 1;
  uint deviceTypes = 7;
  // How its dialog ends, once it is answered.
  int answerCode = 0;
  uint answerDevices = 1;
  QString answerToken;  // Told where it is not empty.
  bool dialogStaysOpen = false;
  bool keysHang = false;  // None of them is answered, until takeKeys.

  QStringList calls;      // In order, without the keys and what is asked of any object.
  QStringList keys;       // As "29 down".
  QVariantMap selection;  // The options that the devices were selected with.
  QString session;        // The path of the open one; empty where there is none.

  void answerDialog();
  void takeKeys();
  void closeSession();
  // It ends, and perhaps starts again.
  void leave();
  void comeBack();

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void answer(const QDBusMessage& call, const QVariantMap& options);
  void emitSignal(const QString& path, const QString& interface, const QString& name,
                  const QVariantList& arguments);

  QDBusConnection bus_;
  QList<QDBusMessage> underWay_;
  QStringList sessions_;  // All that there were.
  QString dialog_;        // The request of the open one.
};

}  // namespace tavin::test
