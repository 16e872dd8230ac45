#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/EngineMessage.h"

namespace tavin {

// The engine's answers, decoded strictly: a required key that is missing, null or of another type
// makes the whole answer undecodable; keys that are not known here are ignored.

struct EngineInfo {
  QString name;   // Sent back as "engine".
  QString label;  // Shown in the menu.
  bool available = false;

  bool operator==(const EngineInfo&) const = default;
};

struct Voice {
  QString id;    // Sent back as "voice".
  QString name;  // Shown in the menu.

  bool operator==(const Voice&) const = default;

  // A top-level JSON array; none when it does not decode.
  static std::optional<std::vector<Voice>> decodeList(const QByteArray& json);
};

struct EngineStatus {
  QString state;
  std::int64_t chars = 0;
  std::optional<QString> error;
  QString engine;
  QString voice;
  double speed = 0;
  bool ready = false;
  std::optional<double> download;  // 0 to 1.
  std::optional<QString> setupError;
  std::vector<EngineInfo> engines;
  // `error` and `setupError` as messages, for the user's eye; empty where those are absent.
  EngineMessage errorMessage = {};
  EngineMessage setupErrorMessage = {};

  bool operator==(const EngineStatus&) const = default;

  // Speech is going on, being prepared or paused.
  bool isActive() const;
  // `download`, which must be present, as a whole percentage, truncated. Not clamped; a value that
  // is no 64-bit integer stops the process.
  std::int64_t downloadPercent() const;

  // A top-level JSON object; none when it does not decode.
  static std::optional<EngineStatus> decode(const QByteArray& json);
};

}  // namespace tavin
