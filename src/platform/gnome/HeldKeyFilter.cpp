#include "platform/gnome/HeldKeyFilter.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace tavin::gnome {
namespace {

using std::chrono::milliseconds;

constexpr int idleDeadline = 300;  // Milliseconds.
// The longest that a keyboard waits before it repeats, and more: later runs without any input come
// from a program.
constexpr milliseconds longestDelay(2500);
// Commands that were started while the key was held may arrive after its release.
constexpr milliseconds stragglers(400);

// Where the shell is too busy to answer it may have been any time; where it has no such service, it
// counts as just now.
PressFilter::Input inputBefore(PressFilter::Clock::time_point asked,
                               const QDBusPendingReply<qulonglong>& idle) {
  const auto now = PressFilter::Clock::now();
  if (idle.isError())
    return {idle.error().type() == QDBusError::NoReply ? PressFilter::Clock::time_point() : now,
            now};
  const milliseconds ago(idle.value());  // Rounded down.
  return {asked - ago - milliseconds(1), now - ago};
}

QDBusMessage questionForIdleTime() {
  const QString monitor = QStringLiteral("org.gnome.Mutter.IdleMonitor");
  return QDBusMessage::createMethodCall(monitor,
                                        QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
                                        monitor, QStringLiteral("GetIdletime"));
}

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

HeldKeyFilter::HeldKeyFilter(const QDBusConnection& bus, std::unique_ptr<RemoteControl> actions)
    : bus_(bus), actions_(std::move(actions)) {}

void HeldKeyFilter::serve(RemoteActions actions) {
  actions.speakOrStop = filtered(std::move(actions.speakOrStop));
  actions.togglePause = filtered(std::move(actions.togglePause));
  actions_->serve(std::move(actions));
}

std::function<void()> HeldKeyFilter::filtered(std::function<void()> action) {
  return [bus = bus_, action = std::move(action), filter = std::make_shared<PressFilter>()] {
    const auto asked = PressFilter::Clock::now();
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(questionForIdleTime(), idleDeadline));
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply,
                     [=](QDBusPendingCallWatcher* done) {
                       const QDBusPendingReply<qulonglong> idle = *done;
                       done->deleteLater();
                       if (filter->isPress(asked, inputBefore(asked, idle)) && action)
                         action();
                     });
  };
}

}  // namespace tavin::gnome
