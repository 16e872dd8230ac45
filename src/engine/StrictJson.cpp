#include "engine/StrictJson.h"

#include <utility>

namespace tavin {

StrictObject::StrictObject(QJsonObject object) : object_(std::move(object)) {}

QJsonValue StrictObject::require(const QString& key, QJsonValue::Type type) {
  QJsonValue value = object_.value(key);
  if (value.type() != type)
    valid_ = false;
  return value;
}

bool StrictObject::absent(const QString& key) const {
  const QJsonValue value = object_.value(key);
  return value.isUndefined() || value.isNull();
}

QString StrictObject::string(const QString& key) {
  return require(key, QJsonValue::String).toString();
}

bool StrictObject::boolean(const QString& key) { return require(key, QJsonValue::Bool).toBool(); }

double StrictObject::number(const QString& key) {
  return require(key, QJsonValue::Double).toDouble();
}

std::int64_t StrictObject::integer(const QString& key) {
  const QJsonValue value = require(key, QJsonValue::Double);
  // A value that is no 64-bit integer gives back whatever default it is asked with.
  if (value.toInteger(0) != value.toInteger(1))
    valid_ = false;
  return value.toInteger();
}

QJsonArray StrictObject::array(const QString& key) {
  return require(key, QJsonValue::Array).toArray();
}

std::optional<QString> StrictObject::optionalString(const QString& key) {
  if (absent(key))
    return std::nullopt;
  return string(key);
}

std::optional<double> StrictObject::optionalNumber(const QString& key) {
  if (absent(key))
    return std::nullopt;
  return number(key);
}

}  // namespace tavin
