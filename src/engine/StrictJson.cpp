#include "engine/StrictJson.h"

#include <cmath>
#include <utility>

namespace tavin {
namespace {

constexpr int mostNesting = 100;  // The engine's messages have four levels.

// The parser keeps an integer that needs more than 64 bits as the nearest double, which is -2^63
// for some that are less.
std::optional<std::int64_t> exactInteger(const Json& number) {
  if (const auto* const positive = number.get_ptr<const Json::number_unsigned_t*>())
    return std::in_range<std::int64_t>(*positive) ? std::optional<std::int64_t>(*positive)
                                                  : std::nullopt;
  if (number.is_number_integer())
    return number.get<std::int64_t>();
  const double value = number.get<double>();
  const bool exact = value > -0x1p63 && value < 0x1p63 && value == std::trunc(value);
  return exact ? std::optional(static_cast<std::int64_t>(value)) : std::nullopt;
}

}  // namespace

Json parsedStrictly(QByteArrayView json) {
  // To the parser a NUL is the end of the text.
  if (json.contains('\0'))
    return {Json::value_t::discarded};
  bool shallow = true;
  const auto see = [&shallow](int depth, Json::parse_event_t, const Json&) {
    shallow = shallow && depth <= mostNesting;
    return shallow;
  };
  Json parsed = Json::parse(json.begin(), json.end(), see, false);
  return shallow ? parsed : Json(Json::value_t::discarded);
}

const Json& memberOf(const Json& object, const char* key) {
  static const Json none;
  const auto found = object.find(key);
  return found == object.end() ? none : *found;
}

QString textIn(const Json& value) {
  const auto* const text = value.get_ptr<const std::string*>();
  return text ? QString::fromStdString(*text) : QString();
}

const Json& StrictObject::require(const char* key, bool (Json::*isOfType)() const) {
  const Json& value = memberOf(object_, key);
  if (!(value.*isOfType)())
    valid_ = false;
  return value;
}

QString StrictObject::string(const char* key) { return textIn(require(key, &Json::is_string)); }

bool StrictObject::boolean(const char* key) {
  const Json& value = require(key, &Json::is_boolean);
  return value.is_boolean() && value.get<bool>();
}

double StrictObject::number(const char* key) {
  const Json& value = require(key, &Json::is_number);
  return value.is_number() ? value.get<double>() : 0;
}

std::int64_t StrictObject::integer(const char* key) {
  const Json& value = require(key, &Json::is_number);
  const auto integer = value.is_number() ? exactInteger(value) : std::nullopt;
  if (!integer)
    valid_ = false;
  return integer.value_or(0);
}

const Json& StrictObject::array(const char* key) {
  static const Json empty = Json::array();
  const Json& value = require(key, &Json::is_array);
  return value.is_array() ? value : empty;
}

std::optional<QString> StrictObject::optionalString(const char* key) {
  if (memberOf(object_, key).is_null())
    return std::nullopt;
  return string(key);
}

std::optional<double> StrictObject::optionalNumber(const char* key) {
  if (memberOf(object_, key).is_null())
    return std::nullopt;
  return number(key);
}

}  // namespace tavin
