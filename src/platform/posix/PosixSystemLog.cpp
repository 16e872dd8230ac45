#include "platform/posix/PosixSystemLog.h"

#include <sys/syslog.h>

#include <utility>

#include "platform/posix/LogLine.h"

namespace tavin::posix {

PosixSystemLog::PosixSystemLog() : PosixSystemLog(syslogSocketPath) {}

PosixSystemLog::PosixSystemLog(std::string syslogSocket) : syslogSocket_(std::move(syslogSocket)) {}

void PosixSystemLog::write(const QString& line) { writeLogLine(line, LOG_NOTICE, syslogSocket_); }

}  // namespace tavin::posix
