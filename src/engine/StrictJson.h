#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <cstdint>
#include <optional>

namespace tavin {

// Reads the members of one JSON object. The first member that is missing, null or of another type
// makes everything read from it invalid; read all members, then ask `valid()`.
class StrictObject {
 public:
  explicit StrictObject(QJsonObject object);

  bool valid() const { return valid_; }
  // For failures that the caller finds, inside a nested value.
  void invalidate() { valid_ = false; }

  QString string(const QString& key);
  bool boolean(const QString& key);
  double number(const QString& key);
  // Only a number that is exactly a 64-bit signed integer.
  std::int64_t integer(const QString& key);
  QJsonArray array(const QString& key);

  // Missing and null are both absent.
  std::optional<QString> optionalString(const QString& key);
  std::optional<double> optionalNumber(const QString& key);

 private:
  QJsonValue require(const QString& key, QJsonValue::Type type);
  bool absent(const QString& key) const;

  QJsonObject object_;
  bool valid_ = true;
};

}  // namespace tavin
