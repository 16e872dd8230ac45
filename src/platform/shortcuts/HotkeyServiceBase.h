#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/HotkeyService.h"

namespace tavin::shortcuts {

// What the services of shortcuts do alike: each keeps the two handlers, and tells nobody before
// they are there. Main thread only.
class HotkeyServiceBase : public HotkeyService {
 public:
  std::int32_t installEventHandler(std::function<void(EventHotKeyID)> callback) final {
    pressed_ = std::move(callback);
    return 0;
  }
  void installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) final {
    answered_ = std::move(callback);
  }

 protected:
  void tellPress(EventHotKeyID id) const {
    if (pressed_)
      pressed_(id);
  }
  void tellAnswer(const HotkeyRegistration& registration) const {
    if (answered_)
      answered_(registration);
  }

 private:
  std::function<void(EventHotKeyID)> pressed_;
  std::function<void(const HotkeyRegistration&)> answered_;
};

}  // namespace tavin::shortcuts
