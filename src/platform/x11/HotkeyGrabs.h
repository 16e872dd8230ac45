#pragma once

#include <QSocketNotifier>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/shortcuts/Service.h"
#include "platform/x11/Connection.h"
#include "platform/x11/HotkeyMapping.h"
#include "platform/x11/KeyGrab.h"
#include "platform/x11/KeyboardExtension.h"
#include "platform/x11/RepeatFilter.h"

namespace tavin::x11 {

// Global shortcuts as key grabs on a connection of their own. An answer comes later where the
// keyboard changes and another program has taken a shortcut's new key; the next change tries again.
// Main thread only.
class HotkeyGrabs final : public shortcuts::Service {
 public:
  // Null where there is no display, or one without XInput 2.1.
  static std::unique_ptr<HotkeyGrabs> create();

  // A refusal's number is the X error code.
  shortcuts::Answer add(const shortcuts::KeyCombination& combination) override;
  void remove(const shortcuts::KeyCombination& combination) override;

 private:
  struct Grabbed {
    std::uint16_t mask = 0;
    std::vector<KeyGrab> grabs;
    bool active = false;
  };

  explicit HotkeyGrabs(std::unique_ptr<Connection> connection);
  std::optional<GrabRefusal> grab(const shortcuts::KeyCombination& combination, Grabbed& grabbed);
  void ungrab(Grabbed& grabbed);
  void readEvents();
  void readQueuedEventsLater();
  void handle(const xcb_generic_event_t& event);
  void handlePress(const xcb_key_press_event_t& press);
  void followKeyboard();
  std::optional<shortcuts::Answer> changeOf(const shortcuts::KeyCombination& combination,
                                            Grabbed& grabbed);

  std::unique_ptr<Connection> connection_;
  KeyboardExtension keyboard_;
  RepeatFilter heldKeys_;
  HotkeyMapping mapping_;
  std::map<shortcuts::KeyCombination, Grabbed> grabbed_;
  bool keyboardChanged_ = false;
  QSocketNotifier notifier_;
};

}  // namespace tavin::x11
