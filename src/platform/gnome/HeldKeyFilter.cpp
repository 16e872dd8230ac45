#include "platform/gnome/HeldKeyFilter.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
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

QDBusMessage questionForIdleTime() {
  const QString monitor = QStringLiteral("org.gnome.Mutter.IdleMonitor");
  return QDBusMessage::createMethodCall(monitor,
                                        QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
                                        monitor, QStringLiteral("GetIdletime"));
}

}  // namespace

bool PressFilter::isPress(Clock::time_point now, Clock::time_point lastInput) {
  const auto lastRun = std::max(lastPress_, lastRepetition_);
  const bool withoutInput = lastRun && lastInput <= *lastPress_ && now - *lastRun < longestDelay;
  const bool straggles = lastRepetition_ && now - *lastRepetition_ < stragglers;
  if (withoutInput || straggles) {
    lastRepetition_ = now;
    return false;
  }
  lastPress_ = now;
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
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(questionForIdleTime(), idleDeadline));
    const auto asked = PressFilter::Clock::now();
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply,
                     [=](QDBusPendingCallWatcher* done) {
                       const QDBusPendingReply<qulonglong> idle = *done;
                       done->deleteLater();
                       // No answer: as if the user had just pressed.
                       const milliseconds ago(idle.isError() ? 0 : idle.value());
                       if (filter->isPress(asked, asked - ago) && action)
                         action();
                     });
  };
}

}  // namespace tavin::gnome
