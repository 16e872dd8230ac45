#include "platform/session/Survey.h"

#include <QDBusMessage>
#include <QDir>
#include <QLibraryInfo>

#include "platform/bus/SessionBus.h"
#include "platform/desktop/DesktopName.h"
#include "platform/gnome/ShellWatch.h"
#include "platform/wayland/Compositor.h"
#include "platform/wayland/Connection.h"
#include "platform/x11/Connection.h"

namespace tavin::session {
namespace {

constexpr double connectSeconds = 1;
constexpr double secondsToAskBus = 1;

bool qtHasWaylandPlugin() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
  return !plugins.entryList({"libqwayland*"}, QDir::Files).isEmpty();
}

// The process that owns a name; 0 where none does.
uint processOf(const QDBusConnection& bus, const QString& name, Deadline deadline) {
  return bus::askBusDaemon(bus, QStringLiteral("GetConnectionUnixProcessID"), name, deadline)
      .toUInt();
}

// Elsewhere a service of that name may run too, started by some program, and serve nobody.
bool kwinServes(const QDBusConnection& bus, Deadline deadline) {
  const uint kwin = processOf(bus, QStringLiteral("org.kde.KWin"), deadline);
  return kwin != 0 && kwin == processOf(bus, QStringLiteral("org.kde.kglobalaccel"), deadline);
}

}  // namespace

Survey Survey::take() {
  Survey found;
  found.compositor = wayland::Compositor::connect();
  found.qtSpeaksWayland = qtHasWaylandPlugin();
  // Where a compositor serves, a lazy Xwayland would be started for nothing.
  found.display =
      (!found.compositor || !found.qtSpeaksWayland) && x11::Connection::open() != nullptr;
  found.wayland = found.compositor || wayland::Connection::open(Deadline::in(connectSeconds));
  // WAYLAND_DISPLAY tells nothing by itself: it may be left of a session that has ended.
  found.xwayland =
      !found.compositor &&
      (found.wayland || qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland"));
  found.desktops = desktop::currentDesktops();
  return found;
}

void Survey::askBus(const QDBusConnection& bus) {
  if (!isWaylandSession() || !bus.isConnected())
    return;
  const Deadline deadline = Deadline::in(secondsToAskBus);
  kwinServesShortcuts = kwinServes(bus, deadline);
  gnomeShellVersion = gnome::shellVersionIn(
      bus.call(gnome::shellVersionQuestion(), QDBus::Block, deadline.remainingMs()));
}

bool Survey::isKwin() const {
  return desktops.contains(QStringLiteral("KDE")) ||
         (compositor && compositor->windowsName() == wayland::plasmaWindowsName);
}

const char* Survey::qtPlatform() const { return showsOnX11() ? "xcb" : "wayland"; }

QByteArray Survey::obstacle() const {
  if (display || (compositor && qtSpeaksWayland))
    return {};
  if (compositor)
    return "no window can be shown: Qt's Wayland plug-in (qt6-wayland) is not installed, and there "
           "is no X display";
  if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    return "no X display, and the Wayland compositor offers no data control";
  return qEnvironmentVariableIsEmpty("DISPLAY")
             ? QByteArray("no X display: DISPLAY is not set")
             : "no X display: cannot connect to " + qgetenv("DISPLAY");
}

}  // namespace tavin::session
