#pragma once

#include <QString>

namespace tavin {

// Diagnostics, one line each, also without a terminal. Any thread.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void write(const QString& line) = 0;
};

}  // namespace tavin
