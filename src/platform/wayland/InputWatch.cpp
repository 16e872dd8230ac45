#include "platform/wayland/InputWatch.h"

#include <algorithm>

#include "platform/wayland/Listener.h"

namespace tavin::wayland {
namespace {

// The least that all compositors count.
constexpr std::uint32_t milliseconds = 1;

}  // namespace

InputWatch::InputWatch(Connection& connection)
    : seat_(connection.seat()),
      standard_(connection.bind<ext_idle_notifier_v1>(ext_idle_notifier_v1_interface, 1)),
      kde_(standard_ ? nullptr
                     : connection.bind<org_kde_kwin_idle>(org_kde_kwin_idle_interface, 1)) {}

void InputWatch::begin() {
  constexpr auto idle = calls<&InputWatch::becomesIdle>;
  constexpr auto resumed = calls<&InputWatch::resumes>;
  static constexpr ext_idle_notification_v1_listener standard{.idled = idle, .resumed = resumed};
  static constexpr org_kde_kwin_idle_timeout_listener kde{.idle = idle, .resumed = resumed};
  end();
  pressIsOver_ = Clock::now() + copy::shortcutsEnd;
  idle_ = false;
  input_ = {};
  if (standard_) {
    standardClock_.reset(
        ext_idle_notifier_v1_get_idle_notification(standard_.get(), milliseconds, seat_));
    ext_idle_notification_v1_add_listener(standardClock_.get(), &standard, this);
  } else if (kde_) {
    kdeClock_.reset(org_kde_kwin_idle_get_idle_timeout(kde_.get(), seat_, milliseconds));
    org_kde_kwin_idle_timeout_add_listener(kdeClock_.get(), &kde, this);
  }
}

void InputWatch::end() {
  standardClock_.reset();
  kdeClock_.reset();
}

void InputWatch::shortcutArrived(copy::UserInput::Time time) {
  pressIsOver_ = std::max(pressIsOver_, time + copy::shortcutsEnd);
  input_.explainBy(time, pressIsOver_);
}

copy::UserInput InputWatch::input() const {
  const bool tells = standardClock_ || kdeClock_;
  const bool settled = idle_ || Clock::now() < pressIsOver_;
  return input_.first() || (tells && settled) ? input_ : copy::UserInput::unknown();
}

// What no shortcut can explain any more is enough: a pointer that moves would wake this thread all
// the time.
void InputWatch::resumes() {
  idle_ = false;
  const auto now = Clock::now();
  if (now < pressIsOver_)
    return;
  input_.note(now);
  if (!input_.mayBeExplained(now - copy::shortcutsEnd))
    end();
}

}  // namespace tavin::wayland
