#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariant>

#include "platform/Deadline.h"

namespace tavin::bus {

// Decides whether the session has a bus that answers, which takes a second at most. To be called
// from the main thread before there is a QApplication or any other thread that uses the bus; the
// functions below do it where it was not. A bus is never started.
//
// Where there is none, QDBusConnection::sessionBus() is disconnected for the whole process, so that
// Qt's own uses of it neither wait for a bus that hangs nor start one.
void decideSessionBus();

// The connection that is opened once and handed to whoever speaks on the bus; disconnected where
// there is none.
QDBusConnection sessionBus();

// A connection of its own to that bus, disconnected where there is none.
QDBusConnection connectToSessionBus(const QString& connectionName);

// What the daemon of `bus` answers to the question `method` about `name`; invalid where it gives no
// answer by then. Waits; any thread.
QVariant askBusDaemon(const QDBusConnection& bus, const QString& method, const QString& name,
                      Deadline deadline);

// The same as connectToSessionBus(), ended with this object. `purpose` names it among Qt's
// connections. Main thread; the connection itself serves any.
class OwnConnection {
 public:
  explicit OwnConnection(const QString& purpose);
  ~OwnConnection() { QDBusConnection::disconnectFromBus(bus_.name()); }
  OwnConnection(const OwnConnection&) = delete;
  OwnConnection& operator=(const OwnConnection&) = delete;

  const QDBusConnection& operator*() const { return bus_; }
  const QDBusConnection* operator->() const { return &bus_; }

 private:
  const QDBusConnection bus_;
};

}  // namespace tavin::bus
