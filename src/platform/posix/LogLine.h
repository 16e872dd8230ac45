#pragma once

#include <QString>
#include <string>

namespace tavin::posix {

inline constexpr const char* syslogSocketPath = "/dev/log";

// Writes one line to standard error and to the system's log under the name "tavin"; `severity` is
// one of <syslog.h>. Control characters become blanks. A reader that is missing, or too slow to
// take the line at once, loses it; nothing waits for it. Any thread.
void writeLogLine(const QString& text, int severity,
                  const std::string& syslogSocket = syslogSocketPath);

}  // namespace tavin::posix
