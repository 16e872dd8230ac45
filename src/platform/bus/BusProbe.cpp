#include "platform/bus/BusProbe.h"

#include <unistd.h>

#include <QStringList>
#include <string>

#include "platform/posix/SocketProbe.h"

namespace tavin::bus {
namespace {

// The first socket that a D-Bus address names; buses of a session have no other transport. Empty
// where it names none.
std::string socketIn(const QString& address) {
  const QString first = address.section(';', 0, 0);
  if (!first.startsWith("unix:"))
    return {};
  for (const QString& pair : first.mid(5).split(',')) {
    const bool abstract = pair.startsWith("abstract=");
    if (!abstract && !pair.startsWith("path="))
      continue;
    const QByteArray path = QByteArray::fromPercentEncoding(pair.section('=', 1).toUtf8());
    return (abstract ? std::string(1, '\0') : std::string()) + path.toStdString();
  }
  return {};
}

}  // namespace

bool busAnswers(const QString& address, Deadline deadline) {
  // A zero byte, then the first question of the protocol.
  const std::string identity = QByteArray::number(getuid()).toHex().toStdString();
  return posix::socketAnswers(
      socketIn(address), std::string(1, '\0') + "AUTH EXTERNAL " + identity + "\r\n", deadline);
}

}  // namespace tavin::bus
