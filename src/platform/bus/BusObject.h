#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <functional>
#include <optional>

namespace tavin::bus {

// An object on a message bus with one interface of its own: checks each call's arguments against
// the method's signature, answers for the properties, sends the signals. Main thread only.
class BusObject : public QDBusVirtualObject {
 public:
  // `description` is the interface's introspection data.
  BusObject(QDBusConnection bus, QString path, QString interface, QString description);
  ~BusObject() override;

  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 protected:
  // Takes arguments of the declared types; answers with the results, or none to refuse them.
  using Handler = std::function<std::optional<QVariantList>(const QVariantList& arguments)>;
  void addMethod(const QString& name, const QString& signature, Handler handler);
  virtual QVariantMap properties() const = 0;
  void emitSignal(const QString& name, const QVariantList& arguments = {});
  const QDBusConnection& bus() const { return bus_; }

 private:
  struct Method {
    QString signature;
    Handler handler;
  };
  QDBusMessage answer(const QDBusMessage& message);
  QDBusMessage answerProperties(const QDBusMessage& message) const;

  QDBusConnection bus_;
  QString path_;
  QString interface_;
  QString description_;
  QHash<QString, Method> methods_;
};

}  // namespace tavin::bus
