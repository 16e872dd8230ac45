#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/HotkeyService.h"

namespace tavin {

class MainQueue;
class SystemLog;

// The program's system-wide shortcuts: which are registered and what each of them runs. There is
// one for the process, made by its entry. Main thread only.
class HotkeyCenter {
 public:
  // Marks our registrations: 'TAVN'.
  static constexpr std::uint32_t signature = 0x5441564E;

  using Handler = std::function<void()>;

  // Not owned; must outlive the center.
  HotkeyCenter(HotkeyService& service, MainQueue& mainQueue, SystemLog& log);

  // Whether the combination (a macOS key code and a Carbon modifier mask, neither negative) is now
  // active. A press runs `handler` from the main queue. A refusal is logged and changes nothing.
  bool registerHotkey(std::int64_t keyCode, std::int64_t modifiers, Handler handler);
  void unregisterAll();

 private:
  void installOnce();

  HotkeyService& service_;
  MainQueue& mainQueue_;
  SystemLog& log_;
  // Ids are 1, 2, 3, ... in the order of successful registrations since the last unregisterAll.
  // Shared with the presses under way, which look their handler up only when they run.
  std::shared_ptr<std::map<std::uint32_t, Handler>> handlers_;
  std::vector<EventHotKeyRef> refs_;
  bool installed_ = false;
};

}  // namespace tavin
