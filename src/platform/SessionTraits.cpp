// What the running session tells about its shortcuts.
#include <QDBusConnection>
#include <QDBusMessage>

#include "platform/Deadline.h"
#include "platform/HotkeyChoice.h"
#include "platform/bus/SessionBus.h"
#include "platform/desktop/DesktopName.h"
#include "platform/gnome/ShellWatch.h"

namespace tavin {
namespace {

constexpr double secondsToAsk = 1;

// The process that owns a name; 0 where none does.
uint processOf(const QString& name, Deadline deadline) {
  return bus::askBusDaemon(QDBusConnection::sessionBus(),
                           QStringLiteral("GetConnectionUnixProcessID"), name, deadline)
      .toUInt();
}

// Elsewhere a service of that name may run too, started by some program, and serve nobody.
bool kwinServesShortcuts(Deadline deadline) {
  const uint kwin = processOf(QStringLiteral("org.kde.KWin"), deadline);
  return kwin != 0 && kwin == processOf(QStringLiteral("org.kde.kglobalaccel"), deadline);
}

}  // namespace

SessionTraits SessionTraits::read(bool wayland) {
  SessionTraits session;
  session.wayland = wayland;
  session.desktops = desktop::currentDesktops();
  if (!session.wayland || !QDBusConnection::sessionBus().isConnected())
    return session;
  const Deadline deadline = Deadline::in(secondsToAsk);
  session.kwinServes = kwinServesShortcuts(deadline);
  session.gnomeShellVersion = gnome::shellVersionIn(QDBusConnection::sessionBus().call(
      gnome::shellVersionQuestion(), QDBus::Block, deadline.remainingMs()));
  return session;
}

}  // namespace tavin
