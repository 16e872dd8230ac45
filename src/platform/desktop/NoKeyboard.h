#pragma once

#include "platform/Keyboard.h"

namespace tavin::desktop {

// For a session that lets no program type: no event can be made.
class NoKeyboard final : public Keyboard {
 public:
  std::uint64_t flagsState() override { return 0; }
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t, bool) override {
    return nullptr;
  }
};

}  // namespace tavin::desktop
