#include "platform/Fatal.h"

#include <sys/syslog.h>

#include <cstdlib>

#include "platform/posix/LogLine.h"

namespace tavin {

void fatal(const QString& what) {
  posix::writeLogLine(QStringLiteral("Tavin: fatal: ") + what, LOG_CRIT);
  std::abort();
}

}  // namespace tavin
