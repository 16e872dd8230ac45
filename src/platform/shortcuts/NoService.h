#pragma once

#include <QString>
#include <utility>

#include "platform/shortcuts/Service.h"

namespace tavin::shortcuts {

// Refuses every combination, and says why.
class NoService final : public Service {
 public:
  explicit NoService(QString reason) : reason_(std::move(reason)) {}

  bool canGrant() const override { return false; }
  Answer add(const KeyCombination&) override { return Answer::refused(reason_); }
  void remove(const KeyCombination&) override {}

 private:
  const QString reason_;
};

}  // namespace tavin::shortcuts
