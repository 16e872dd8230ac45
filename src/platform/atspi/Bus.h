#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QVariantList>
#include <atomic>
#include <map>
#include <mutex>
#include <vector>

#include "platform/Deadline.h"
#include "platform/atspi/Object.h"

namespace tavin::atspi {

// One question to an object. `interface` without its common beginning "org.a11y.atspi.".
struct Question {
  ObjectRef object;
  const char* interface;
  const char* member;
  QVariantList arguments = {};
};

// Reads a property instead of calling a method.
Question property(const ObjectRef& object, const char* interface, const char* name);

// A connection of our own to the session's accessibility bus, made when it is first needed and
// again after the bus was restarted. It listens to nothing, so nothing that happens on the bus
// wakes us. Any thread; every call is bounded in time.
class Bus {
 public:
  // `session` is the session's bus, which tells where this one is.
  explicit Bus(const QDBusConnection& session) : session_(session) {}
  ~Bus();
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  // Whether there is a connection now.
  bool connect(Deadline deadline);
  // The longest that one message may take.
  void setMessageSeconds(double seconds) { messageSeconds_ = seconds; }

  QDBusMessage ask(const Question& question, Deadline deadline);
  // Asks many at once; the answers in the order of the questions, errors among them. What could not
  // be asked before the deadline counts as late.
  std::vector<QDBusMessage> ask(const std::vector<Question>& questions, Deadline deadline);
  // Asks without waiting for the answer.
  QDBusPendingCall send(const Question& question, Deadline deadline);

  // The programs on the bus, by their root objects.
  std::vector<ObjectRef> programs(Deadline deadline);
  // The process behind a program's connection; 0 where it is not known.
  std::vector<std::int64_t> processIds(const std::vector<ObjectRef>& programs, Deadline deadline);

 private:
  QDBusConnection connection();
  QDBusPendingCall send(const QDBusMessage& message, Deadline deadline);
  void keepListenerRegistered();

  const QDBusConnection session_;
  std::mutex mutex_;
  QString name_;  // Of the connection, in Qt's list; empty without one.
  int connections_ = 0;
  std::atomic<double> messageSeconds_ = 0.3;
  std::map<QString, std::int64_t> processIds_;  // Names on a bus are never given twice.
};

}  // namespace tavin::atspi
