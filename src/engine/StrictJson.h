#pragma once

#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>

namespace tavin {

using Json = nlohmann::json;

// Exactly what RFC 8259 has, in UTF-8; `is_discarded()` for all else. Qt's own parser lets through
// ".5", "\q" and half a character.
Json parsedStrictly(QByteArrayView json);

// Reads the members of one JSON object, which must outlive it. What is no object has no members.
// The first member that is missing, null or of another type makes everything read from it invalid;
// read all members, then ask `valid()`.
class StrictObject {
 public:
  explicit StrictObject(const Json& object) : object_(object) {}

  bool valid() const { return valid_; }
  // For failures that the caller finds, inside a nested value.
  void invalidate() { valid_ = false; }

  QString string(const char* key);
  bool boolean(const char* key);
  double number(const char* key);
  // Only a number that is exactly a 64-bit signed integer.
  std::int64_t integer(const char* key);
  // Empty when invalid.
  const Json& array(const char* key);

  // Missing and null are both absent.
  std::optional<QString> optionalString(const char* key);
  std::optional<double> optionalNumber(const char* key);

 private:
  const Json& require(const char* key, bool (Json::*isOfType)() const);

  const Json& object_;
  bool valid_ = true;
};

// Null where there is no such member.
const Json& memberOf(const Json& object, const char* key);
// Empty where it is no string.
QString textIn(const Json& value);

}  // namespace tavin
