#include "platform/gnome/HeldKeyFilter.h"

#include <QDBusPendingCallWatcher>
#include <utility>

namespace tavin::gnome {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds idleDeadline(300);
// The longest that a keyboard waits before it repeats, and more: later runs without any input come
// from a program.
constexpr milliseconds longestDelay(2500);
// Commands that were started while the key was held may arrive after its release.
constexpr milliseconds stragglers(400);

}  // namespace

bool PressFilter::isPress(Clock::time_point now, Input last) {
  const bool sameInput = press_ && last.earliest <= press_->input.latest &&
                         now - repetition_.value_or(press_->at) < longestDelay;
  const bool straggles = repetition_ && now - *repetition_ < stragglers;
  if (sameInput || straggles) {
    repetition_ = now;
    return false;
  }
  press_ = Press{now, last};
  repetition_.reset();
  return true;
}

HeldKeyFilter::HeldKeyFilter(const QDBusConnection& bus, std::unique_ptr<RemoteControl> actions,
                             std::shared_ptr<HeldModifiers> modifiers)
    : bus_(bus), actions_(std::move(actions)), modifiers_(std::move(modifiers)) {}

void HeldKeyFilter::serve(RemoteActions actions) {
  actions.speakOrStop = filtered(std::move(actions.speakOrStop), modifiers_);
  actions.togglePause = filtered(std::move(actions.togglePause), nullptr);
  actions_->serve(std::move(actions));
}

std::function<void()> HeldKeyFilter::filtered(std::function<void()> action,
                                              std::shared_ptr<HeldModifiers> modifiers) {
  return [bus = bus_, action = std::move(action), filter = std::make_shared<PressFilter>(),
          modifiers = std::move(modifiers)] {
    const auto asked = Clock::now();
    auto* reply = new QDBusPendingCallWatcher(askIdleTime(bus, idleDeadline));
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply,
                     [=](QDBusPendingCallWatcher* done) {
                       const Input input = lastInput(asked, *done);
                       done->deleteLater();
                       if (!filter->isPress(asked, input))
                         return;
                       if (modifiers)
                         modifiers->pressed(asked, input);
                       if (action)
                         action();
                     });
  };
}

}  // namespace tavin::gnome
