#pragma once

#include <QString>

namespace tavin {

// Stops the process for a programming error or a value that nothing sensible can be done with: one
// log line, then abort. Any thread.
[[noreturn]] void fatal(const QString& what);

// Stops the process where `condition` does not hold.
inline void require(bool condition, const char* what) {
  if (!condition)
    fatal(QString::fromLatin1(what));
}

}  // namespace tavin
