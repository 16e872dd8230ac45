#include "engine/EngineStatus.h"

#include <algorithm>
#include <array>

#include "engine/StrictJson.h"
#include "platform/Fatal.h"

namespace tavin {
namespace {

EngineInfo decodeInfo(const Json& value, StrictObject& enclosing) {
  StrictObject object(value);
  EngineInfo info;
  info.name = object.string("name");
  info.label = object.string("label");
  info.available = object.boolean("available");
  if (!object.valid())
    enclosing.invalidate();
  return info;
}

std::vector<EngineInfo> decodeEngines(StrictObject& status) {
  std::vector<EngineInfo> engines;
  for (const Json& value : status.array("engines")) engines.push_back(decodeInfo(value, status));
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
  const Json document = parsedStrictly(json);
  if (!document.is_object())
    return std::nullopt;
  StrictObject object(document);
  EngineStatus status;
  status.state = object.string("state");
  status.chars = object.integer("chars");
  status.error = object.optionalString("error");
  status.engine = object.string("engine");
  status.voice = object.string("voice");
  status.speed = object.number("speed");
  status.ready = object.boolean("ready");
  status.download = object.optionalNumber("download");
  status.setupError = object.optionalString("setup_error");
  status.engines = decodeEngines(object);
  if (status.error)
    status.errorMessage = EngineMessage::decode(*status.error, memberOf(document, "error_id"),
                                                memberOf(document, "error_values"));
  if (status.setupError)
    status.setupErrorMessage =
        EngineMessage::decode(*status.setupError, memberOf(document, "setup_error_id"),
                              memberOf(document, "setup_error_values"));
  if (!object.valid())
    return std::nullopt;
  return status;
}

std::optional<std::vector<Voice>> Voice::decodeList(const QByteArray& json) {
  const Json document = parsedStrictly(json);
  if (!document.is_array())
    return std::nullopt;
  std::vector<Voice> voices;
  for (const Json& value : document) {
    StrictObject object(value);
    voices.push_back({object.string("id"), object.string("name")});
    if (!object.valid())
      return std::nullopt;
  }
  return voices;
}

}  // namespace tavin
