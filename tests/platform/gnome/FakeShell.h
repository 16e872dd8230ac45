#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>

namespace tavin::test {

// What GNOME Shell tells on the session bus, when the test says so: it answers nothing before.
class FakeShell : public QDBusVirtualObject {
 public:
  FakeShell();
  ~FakeShell() override;

  // Takes the names that programs look for it by, and leaves them.
  void start();
  void stop();
  qsizetype questions() const { return questions_.size(); }
  // Answers what was asked for so far: how long the user has been idle, or the version.
  void tellIdleTime(qulonglong milliseconds);
  void tellVersion(const QString& version);

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusConnection bus_;
  QList<QDBusMessage> questions_;
};

}  // namespace tavin::test
