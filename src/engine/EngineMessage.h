#pragma once

#include <QString>
#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "words/Words.h"

namespace tavin {

// What the engine tells the user: its English text and, where it has given them, the message's
// stable name and what it filled in. Any thread.
struct EngineMessage {
  QString text;
  QString id;
  std::vector<EngineMessage> values;  // Some are messages themselves.

  bool operator==(const EngineMessage&) const = default;

  // What is not of the right type counts as not given: the text alone is the engine's to promise.
  static EngineMessage decode(const QString& text, const nlohmann::json& id,
                              const nlohmann::json& values);
  // In the user's language where the program knows the message, else as the engine says it.
  Words words() const;
};

}  // namespace tavin
