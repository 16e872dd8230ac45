#include "platform/atspi/BusAddress.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include "platform/atspi/Object.h"
#include "platform/bus/SessionBus.h"

namespace tavin::atspi {

QString busAddress(Deadline deadline) {
  QString given = qEnvironmentVariable("AT_SPI_BUS_ADDRESS");
  if (!given.isEmpty())
    return given;
  if (!bus::sessionBusIsUsable())
    return {};
  const auto question =
      QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
  const auto answer =
      QDBusConnection::sessionBus().call(question, QDBus::Block, deadline.remainingMs());
  return valueIn(answer).toString();
}

}  // namespace tavin::atspi
