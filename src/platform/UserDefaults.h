#pragma once

#include <QString>
#include <optional>

namespace tavin {

// The user's stored settings. Main thread only. What another process wrote is seen at the next
// read.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;
  virtual std::optional<QString> string(const QString& key) = 0;
  virtual void setString(const QString& key, const QString& value) = 0;
};

}  // namespace tavin
