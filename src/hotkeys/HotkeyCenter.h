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
  // active. A press runs `handler` from the main queue. A refusal is logged and changes nothing,
  // except where the desktop has yet to answer.
  bool registerHotkey(std::int64_t keyCode, std::int64_t modifiers, Handler handler);
  void unregisterAll();

  // Whether each combination asked for since the last unregisterAll is active now.
  bool allActive() const;
  // `answered` is called when a desktop's late answer, which is logged, may have changed that. Not
  // for a combination that was released meanwhile.
  void setAnswerHandler(std::function<void()> answered);

 private:
  struct Registration {
    std::int64_t keyCode;
    std::int64_t modifiers;
    EventHotKeyRef ref;
    bool active;
  };

  void installOnce();
  void takeAnswer(const HotkeyRegistration& answer);
  void logRefusal(const Registration& refused, std::int32_t status, const QString& reason);

  HotkeyService& service_;
  MainQueue& mainQueue_;
  SystemLog& log_;
  // Ids are 1, 2, 3, ... in the order of registrations since the last unregisterAll that succeeded
  // or may still do so.
  // Shared with the presses under way, which look their handler up only when they run.
  std::shared_ptr<std::map<std::uint32_t, Handler>> handlers_;
  std::vector<Registration> registrations_;
  std::function<void()> answered_;
  bool anyRefused_ = false;  // For good.
  bool installed_ = false;
};

}  // namespace tavin
