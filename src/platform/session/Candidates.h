#pragma once

#include <QString>
#include <span>
#include <vector>

#include "platform/session/Survey.h"

namespace tavin::session {

// One way to do a service: a row in the table of all of them, which stand in the order in which
// they are tried, each with the reason for its place. Create is a function that makes the service,
// or nothing where it cannot be had after all.
template <typename Create>
struct Candidate {
  const char* name;               // In the log, and for the variable that forces it.
  bool (*serves)(const Survey&);  // Whether a session of this kind has it.
  Create* create;
};

// The row that the environment's `variable` names, else those that serve in this session.
template <typename Row>
std::vector<const Row*> candidates(std::span<const Row> table, const char* variable,
                                   const Survey& survey) {
  const QString forced = qEnvironmentVariable(variable);
  std::vector<const Row*> found;
  for (const Row& row : table) {
    if (forced == QLatin1String(row.name))
      return {&row};
    if (row.serves(survey))
      found.push_back(&row);
  }
  return found;
}

}  // namespace tavin::session
