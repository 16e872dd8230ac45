#include "platform/bus/BusSignal.h"

namespace tavin::bus {

BusSignal::BusSignal(const QDBusConnection& bus, Source source, Handler handler)
    : bus_(bus), source_(std::move(source)), handler_(std::move(handler)) {
  bus_.connect(source_.service, source_.path, source_.interface, source_.signal, this,
               SLOT(received(QDBusMessage)));
}

BusSignal::~BusSignal() {
  bus_.disconnect(source_.service, source_.path, source_.interface, source_.signal, this,
                  SLOT(received(QDBusMessage)));
}

void BusSignal::received(const QDBusMessage& message) {
  const Handler handler = handler_;  // It may end this object.
  handler(message);
}

}  // namespace tavin::bus
