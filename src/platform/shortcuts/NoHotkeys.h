#pragma once

#include <QString>
#include <utility>

#include "platform/HotkeyService.h"

namespace tavin::shortcuts {

// Refuses every combination, and says why.
class NoHotkeys final : public HotkeyService {
 public:
  explicit NoHotkeys(QString reason) : reason_(std::move(reason)) {}

  std::int32_t installEventHandler(std::function<void(EventHotKeyID)>) override { return -1; }
  void installAnswerHandler(std::function<void(const HotkeyRegistration&)>) override {}
  HotkeyRegistration registerEventHotKey(std::uint32_t, std::uint32_t, EventHotKeyID) override {
    return HotkeyRegistration::refused(reason_);
  }
  void unregisterEventHotKey(const EventHotKeyRef&) override {}

 private:
  QString reason_;
};

}  // namespace tavin::shortcuts
