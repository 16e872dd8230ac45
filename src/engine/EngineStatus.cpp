#include "engine/EngineStatus.h"

#include <QJsonDocument>
#include <algorithm>
#include <array>

#include "engine/JsonLexis.h"
#include "engine/StrictJson.h"
#include "platform/Fatal.h"

namespace tavin {
namespace {

// An element that is no object reads as an empty one, which lacks the required keys.
EngineInfo decodeInfo(const QJsonValue& value, StrictObject& enclosing) {
  StrictObject object(value.toObject());
  EngineInfo info;
  info.name = object.string(QStringLiteral("name"));
  info.label = object.string(QStringLiteral("label"));
  info.available = object.boolean(QStringLiteral("available"));
  if (!object.valid())
    enclosing.invalidate();
  return info;
}

std::vector<EngineInfo> decodeEngines(StrictObject& status) {
  std::vector<EngineInfo> engines;
  for (const auto& value : status.array(QStringLiteral("engines")))
    engines.push_back(decodeInfo(value, status));
  return engines;
}

}  // namespace

bool EngineStatus::isActive() const {
  static const std::array active{QStringLiteral("speaking"), QStringLiteral("loading"),
                                 QStringLiteral("paused")};
  return std::find(active.begin(), active.end(), state) != active.end();
}

std::int64_t EngineStatus::downloadPercent() const {
  const double percent = *download * 100;
  // The bounds are powers of two, so the comparison is exact; it fails for what is not a number.
  require(percent >= -0x1p63 && percent < 0x1p63, "the engine's download is no fraction");
  return static_cast<std::int64_t>(percent);
}

std::optional<EngineStatus> EngineStatus::decode(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isObject() || !hasStrictJsonLexis(json))
    return std::nullopt;
  StrictObject object(document.object());
  const auto message = [&document](const std::optional<QString>& text, const QString& field) {
    return text ? EngineMessage::decode(*text, document[field + QStringLiteral("_id")],
                                        document[field + QStringLiteral("_values")])
                : EngineMessage();
  };
  EngineStatus status;
  status.state = object.string(QStringLiteral("state"));
  status.chars = object.integer(QStringLiteral("chars"));
  status.error = object.optionalString(QStringLiteral("error"));
  status.engine = object.string(QStringLiteral("engine"));
  status.voice = object.string(QStringLiteral("voice"));
  status.speed = object.number(QStringLiteral("speed"));
  status.ready = object.boolean(QStringLiteral("ready"));
  status.download = object.optionalNumber(QStringLiteral("download"));
  status.setupError = object.optionalString(QStringLiteral("setup_error"));
  status.engines = decodeEngines(object);
  status.errorMessage = message(status.error, QStringLiteral("error"));
  status.setupErrorMessage = message(status.setupError, QStringLiteral("setup_error"));
  if (!object.valid())
    return std::nullopt;
  return status;
}

std::optional<std::vector<Voice>> Voice::decodeList(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isArray() || !hasStrictJsonLexis(json))
    return std::nullopt;
  std::vector<Voice> voices;
  for (const auto& value : document.array()) {
    StrictObject object(value.toObject());
    voices.push_back({object.string(QStringLiteral("id")), object.string(QStringLiteral("name"))});
    if (!object.valid())
      return std::nullopt;
  }
  return voices;
}

}  // namespace tavin
