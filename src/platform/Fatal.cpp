#include "platform/Fatal.h"

#include <syslog.h>

#include <cstdio>
#include <cstdlib>

namespace tavin {

void fatal(const QString& what) {
  const QByteArray line = QByteArrayLiteral("Tavin: fatal: ") + what.toUtf8();
  std::fprintf(stderr, "%s\n", line.constData());
  ::syslog(LOG_CRIT, "%s", line.constData());
  std::abort();
}

}  // namespace tavin
