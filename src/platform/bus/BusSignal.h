#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <utility>

namespace tavin::bus {

// A signal on a message bus, heard as long as this object lives, which the
// handler may end. Main thread only.
class BusSignal final : public QObject {
  Q_OBJECT

 public:
  using Handler = std::function<void(const QDBusMessage&)>;
  struct Source {
    QString service;
    QString path;
    QString interface;
    QString signal;
  };

  BusSignal(const QDBusConnection& bus, Source source, Handler handler);
  ~BusSignal() override;

 public Q_SLOTS:
  void received(const QDBusMessage& message);

 private:
  QDBusConnection bus_;
  const Source source_;
  const Handler handler_;
};

}  // namespace tavin::bus
