#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <memory>
#include <vector>

#include "platform/Eventually.h"
#include "platform/shortcuts/RegisteredHotkeys.h"
#include "platform/x11/HotkeyGrabs.h"
#include "platform/x11/TestKeyboard.h"

namespace tavin::test {

namespace mac {
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t r = 15;
}  // namespace mac

// The shortcuts on a real display, and a keyboard to press them with.
class HotkeyTest : public testing::Test {
 protected:
  HotkeyTest() {
    service_->installEventHandler([this](EventHotKeyID id) { pressed_.push_back(id.id); });
  }

  HotkeyRegistration add(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) {
    return service_->registerEventHotKey(keyCode, modifiers, {.signature = 0x5441564e, .id = id});
  }

  // The ids of all presses so far. A shortcut of its own, pressed last, shows that no event is
  // still on its way: the display keeps their order.
  std::vector<std::uint32_t> presses() {
    constexpr std::uint32_t last = 1000;
    const auto fence = add(last, mac::r, HotkeyModifiers::shiftKey | HotkeyModifiers::controlKey);
    EXPECT_EQ(fence.status, 0);
    keyboard_.type({key::leftShift, key::leftControl, key::r});
    EXPECT_TRUE(eventually([this] { return !pressed_.empty() && pressed_.back() == last; }));
    service_->unregisterEventHotKey(fence.ref);
    std::erase(pressed_, last);
    return pressed_;
  }

  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  std::unique_ptr<HotkeyService> service_ =
      std::make_unique<shortcuts::RegisteredHotkeys>(x11::HotkeyGrabs::create());
  TestKeyboard keyboard_;
  std::vector<std::uint32_t> pressed_;
};

}  // namespace tavin::test
