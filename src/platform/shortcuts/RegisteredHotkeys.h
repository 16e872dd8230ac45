#pragma once

#include <map>
#include <memory>

#include "platform/HotkeyService.h"
#include "platform/shortcuts/Service.h"

namespace tavin::shortcuts {

// The shortcuts of a session: keeps what is registered, and has the desktop's service do the rest.
// Main thread only.
class RegisteredHotkeys final : public HotkeyService {
 public:
  // `service` is not null. `arrived` is called for each press before anything else is.
  explicit RegisteredHotkeys(
      std::unique_ptr<Service> service, std::function<void()> arrived = [] {});
  ~RegisteredHotkeys() override;

  bool canGrant() const override { return service_->canGrant(); }
  std::int32_t installEventHandler(std::function<void(EventHotKeyID)> callback) override;
  void installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) override;
  HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                         EventHotKeyID id) override;
  void unregisterEventHotKey(const EventHotKeyRef& ref) override;

  // As Service::release().
  void release() { service_->release(); }

 private:
  struct HotKey;

  void tellPress(const KeyCombination& combination) const;
  void tellAnswer(const KeyCombination& combination, const Answer& answer) const;

  const std::function<void()> arrived_;
  std::function<void(EventHotKeyID)> pressed_;
  std::function<void(const HotkeyRegistration&)> answered_;
  std::map<KeyCombination, std::shared_ptr<HotKey>> hotKeys_;
  const std::unique_ptr<Service> service_;
};

}  // namespace tavin::shortcuts
