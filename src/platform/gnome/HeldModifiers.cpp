#include "platform/gnome/HeldModifiers.h"

#include <QDBusPendingCallWatcher>
#include <algorithm>

#include "platform/Keyboard.h"

namespace tavin::gnome {
namespace {

using std::chrono::milliseconds;

// From a key to the command that it runs; what comes later was started in another way.
constexpr milliseconds slowestCommand(400);
// From a press to the question about it: the selection is looked for meanwhile.
constexpr milliseconds longestCapture(5000);
// The modifiers go up within this time after the key.
constexpr milliseconds handOpens(120);
constexpr milliseconds answerDeadline(100);

}  // namespace

void ShortcutHold::pressed(Clock::time_point now) {
  press_ = Press{now, now};
  released_.reset();
}

void ShortcutHold::refine(Clock::time_point press, InputTime input) {
  if (!press_ || press_->at != press)
    return;
  if (press - input.latest < slowestCommand)
    press_->key = std::min(press, input.latest);
  else
    press_.reset();
}

bool ShortcutHold::mayBeHeld(Clock::time_point now) const {
  return press_ && now - press_->at < longestCapture;
}

bool ShortcutHold::isHeld(Clock::time_point now, InputTime input) {
  if (!mayBeHeld(now))
    return false;
  if (!released_ && input.earliest > press_->key)
    released_ = input.latest;
  return !released_ || now - *released_ < handOpens;
}

void HeldModifiers::pressed(Clock::time_point now) {
  const std::lock_guard lock(mutex_);
  hold_.pressed(now);
}

void HeldModifiers::refine(Clock::time_point press, InputTime input) {
  const std::lock_guard lock(mutex_);
  hold_.refine(press, input);
}

void HeldModifiers::noteIn(const std::shared_ptr<HeldModifiers>& modifiers) {
  const auto asked = Clock::now();
  modifiers->pressed(asked);
  auto* reply = new QDBusPendingCallWatcher(askIdleTime(modifiers->bus_, answerDeadline));
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply,
                   [modifiers, asked](QDBusPendingCallWatcher* done) {
                     done->deleteLater();
                     modifiers->refine(asked, lastInput(asked, *done));
                   });
}

std::uint64_t HeldModifiers::flags() {
  const auto asked = Clock::now();
  {
    const std::lock_guard lock(mutex_);
    if (!hold_.mayBeHeld(asked))
      return 0;
  }
  QDBusPendingCall answer = askIdleTime(bus_, answerDeadline);
  answer.waitForFinished();
  const InputTime input = lastInput(asked, answer);
  const std::lock_guard lock(mutex_);
  return hold_.isHeld(Clock::now(), input) ? EventFlags::option : 0;
}

}  // namespace tavin::gnome
