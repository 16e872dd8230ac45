#include "platform/atspi/BusAddress.h"

#include <QDBusMessage>

#include "platform/atspi/Object.h"

namespace tavin::atspi {

QString busAddress(const QDBusConnection& bus, Deadline deadline) {
  QString given = qEnvironmentVariable("AT_SPI_BUS_ADDRESS");
  if (!given.isEmpty())
    return given;
  const auto question =
      QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
  const auto answer = bus.call(question, QDBus::Block, deadline.remainingMs());
  return valueIn(answer).toString();
}

}  // namespace tavin::atspi
