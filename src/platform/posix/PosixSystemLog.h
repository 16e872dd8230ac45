#pragma once

#include <string>

#include "platform/SystemLog.h"

namespace tavin::posix {

// Writes each line to standard error and to the system's log under the name "tavin". A reader of
// either that is missing, or too slow to take the line at once, loses it; nothing waits for it.
class PosixSystemLog final : public SystemLog {
 public:
  PosixSystemLog();
  explicit PosixSystemLog(std::string syslogSocket);
  // Control characters in the text become blanks, so that one call is one line.
  void write(const QString& line) override;

 private:
  std::string syslogSocket_;
};

}  // namespace tavin::posix
