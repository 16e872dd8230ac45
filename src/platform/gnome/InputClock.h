#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <chrono>

namespace tavin::gnome {

using Clock = std::chrono::steady_clock;

// When the user last pressed, released or moved anything, as nearly as is known.
struct InputTime {
  Clock::time_point earliest;
  Clock::time_point latest;
};

// Asks the shell how long the user has been idle. Any thread.
QDBusPendingCall askIdleTime(const QDBusConnection& bus, std::chrono::milliseconds deadline);

// Its answer to a question that was `asked` then. Where the shell is too busy to answer it may have
// been any time; where it has no such service, it counts as just now.
InputTime lastInput(Clock::time_point asked, const QDBusPendingCall& answer);

}  // namespace tavin::gnome
