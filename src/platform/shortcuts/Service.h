#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/HotkeyService.h"
#include "platform/shortcuts/KeyCombination.h"

namespace tavin::shortcuts {

// What a desktop says to a combination.
struct Answer {
  HotkeyState state = HotkeyState::refused;
  QString reason = {};  // Why it is not granted, for the log; may be empty.
  std::int32_t number = HotkeyRegistration::noNumber;  // The service's own, of a refusal.

  static Answer granted() { return {.state = HotkeyState::granted}; }
  static Answer refused(QString reason, std::int32_t number = HotkeyRegistration::noNumber) {
    return {.state = HotkeyState::refused, .reason = std::move(reason), .number = number};
  }
  static Answer pending(QString reason) {
    return {.state = HotkeyState::pending, .reason = std::move(reason)};
  }
};

// A desktop's way to let a program have shortcuts. Main thread only.
class Service {
 public:
  using Pressed = std::function<void(const KeyCombination&)>;
  using Answered = std::function<void(const KeyCombination&, const Answer&)>;

  virtual ~Service() = default;
  // `pressed` is called once for each press however long the key is held; `answered`, never from
  // within another call, with an answer that came later or was taken back. Before anything is
  // added.
  void tell(Pressed pressed, Answered answered) {
    pressed_ = std::move(pressed);
    answered_ = std::move(answered);
  }
  // As HotkeyService::canGrant().
  virtual bool canGrant() const { return true; }
  // Never grants a key that will not arrive. Bounded in time. No combination is added twice.
  virtual Answer add(const KeyCombination& combination) = 0;
  // Nothing happens to a combination that is not there.
  virtual void remove(const KeyCombination& combination) = 0;
  // Gives the desktop back what would stay after the process: its shutdown hook, bounded in time.
  virtual void release() {}

 protected:
  void tellPress(const KeyCombination& combination) const {
    if (pressed_)
      pressed_(combination);
  }
  void tellAnswer(const KeyCombination& combination, const Answer& answer) const {
    if (answered_)
      answered_(combination, answer);
  }

 private:
  Pressed pressed_;
  Answered answered_;
};

}  // namespace tavin::shortcuts
