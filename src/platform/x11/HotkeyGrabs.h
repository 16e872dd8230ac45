#pragma once

#include <QSocketNotifier>
#include <memory>
#include <vector>

#include "platform/shortcuts/HotkeyServiceBase.h"
#include "platform/x11/Connection.h"
#include "platform/x11/HeldKeys.h"
#include "platform/x11/HotkeyMapping.h"
#include "platform/x11/KeyGrab.h"
#include "platform/x11/KeyboardExtension.h"

namespace tavin::x11 {

// Global shortcuts as key grabs on a connection of their own. An answer comes later where the
// keyboard changes and another program has taken a shortcut's new key; the next change tries again.
// Main thread only.
class HotkeyGrabs final : public shortcuts::HotkeyServiceBase {
 public:
  // Null where there is no display, or one without XInput 2.1.
  static std::unique_ptr<HotkeyGrabs> create();

  // A refusal's status is the X error code.
  HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                         EventHotKeyID id) override;
  void unregisterEventHotKey(const EventHotKeyRef& ref) override;

 private:
  struct HotKey;

  explicit HotkeyGrabs(std::unique_ptr<Connection> connection);
  std::optional<GrabRefusal> grab(HotKey& hotKey);
  void ungrab(HotKey& hotKey);
  bool isRegistered(const HotKey& wanted) const;
  void readEvents();
  void readQueuedEventsLater();
  void handle(const xcb_generic_event_t& event);
  void handlePress(const xcb_key_press_event_t& press);
  void followKeyboard();
  std::optional<HotkeyRegistration> changeOf(const std::shared_ptr<HotKey>& hotKey);

  std::unique_ptr<Connection> connection_;
  KeyboardExtension keyboard_;
  HeldKeys heldKeys_;
  HotkeyMapping mapping_;
  std::vector<std::shared_ptr<HotKey>> hotKeys_;
  bool keyboardChanged_ = false;
  QSocketNotifier notifier_;
};

}  // namespace tavin::x11
