#include "platform/DesktopServices.h"

#include <QDir>
#include <QLibraryInfo>
#include <utility>

#include "platform/capture/AssembleCapture.h"
#include "platform/desktop/DesktopName.h"
#include "platform/gnome/GnomeWindows.h"
#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/XwaylandKeys.h"
#include "platform/gnome/XwaylandPasteboard.h"
#include "platform/portal/PortalKeyboard.h"
#include "platform/wayland/Connection.h"
#include "platform/wayland/FakeInput.h"
#include "platform/wayland/KeyStates.h"
#include "platform/wayland/PlasmaWindows.h"
#include "platform/wayland/VirtualKeyboard.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandWindowSystem.h"
#include "platform/x11/Connection.h"
#include "platform/x11/CreateCapture.h"
#include "platform/x11/DisplayBell.h"
#include "platform/x11/X11Keyboard.h"

namespace tavin {
namespace {

constexpr double connectSeconds = 1;
// The first that serves is taken: the one that may need a dialog comes last.
constexpr const char* waylandKeyboards = "virtual-keyboard fake-input portal";

// What is forced, else what serves in such a session; that too where the value is none of `known`.
QString chosen(const char* variable, const QStringList& known, const char* serves) {
  const QString forced = qEnvironmentVariable(variable);
  return known.contains(forced) ? forced : QString(QLatin1String(serves));
}

bool qtSpeaksWayland() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
  return !plugins.entryList({"libqwayland*"}, QDir::Files).isEmpty();
}

std::optional<copy::Clipboard> createClipboard(
    const QString& kind, const std::shared_ptr<wayland::Compositor>& compositor) {
  if (kind == "x11")
    return x11::createClipboard();
  if (kind != "data-control" || !compositor)
    return std::nullopt;
  // No protocol hands a clipboard over: the managers there have read it already.
  return copy::Clipboard{std::make_unique<wayland::WaylandPasteboard>(compositor), [] {}};
}

}  // namespace

DesktopServices::DesktopServices()
    : compositor_(wayland::Compositor::connect()),
      qtSpeaksWayland_(qtSpeaksWayland()),
      // Where a compositor serves, a lazy Xwayland would be started for nothing.
      display_((!compositor_ || !qtSpeaksWayland_) && x11::Connection::open() != nullptr),
      wayland_(compositor_ || wayland::Connection::open(Deadline::in(connectSeconds))),
      // WAYLAND_DISPLAY tells nothing by itself: it may be left of a session that has ended.
      xwayland_(!compositor_ &&
                (wayland_ || qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland"))),
      clipboard_(
          chosen("TAVIN_CLIPBOARD", {"data-control", "x11"}, compositor_ ? "data-control" : "x11")),
      keyboard_(chosen("TAVIN_KEYBOARD",
                       {"virtual-keyboard", "fake-input", "portal", "xtest", "none"},
                       compositor_ ? waylandKeyboards
                       : xwayland_ ? "portal"
                                   : "xtest")),
      windows_(chosen("TAVIN_WINDOWS", {"compositor", "x11"}, compositor_ ? "compositor" : "x11")) {
}

DesktopServices::~DesktopServices() = default;

QByteArray DesktopServices::obstacle() const {
  if (windows_ == "compositor" && !compositor_)
    return "there is no Wayland compositor with data control";
  if (display_ || (compositor_ && qtSpeaksWayland_))
    return {};
  if (compositor_)
    return "no window can be shown: Qt's Wayland plug-in (qt6-wayland) is not installed, and there "
           "is no X display";
  if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    return "no X display, and the Wayland compositor offers no data control";
  return qEnvironmentVariableIsEmpty("DISPLAY")
             ? QByteArray("no X display: DISPLAY is not set")
             : "no X display: cannot connect to " + qgetenv("DISPLAY");
}

const char* DesktopServices::qtPlatform() const {
  return wayland_ && qtSpeaksWayland_ ? "wayland" : "xcb";
}

std::unique_ptr<windows::WindowSystem> DesktopServices::createWindows() const {
  if (windows_ == "compositor")
    return std::make_unique<wayland::WaylandWindowSystem>(compositor_);
  if (isWaylandSession())
    return std::make_unique<gnome::GnomeWindows>(x11::createWindowSystem);
  return x11::createWindowSystem();
}

bool DesktopServices::isKwin() const {
  return desktop::currentDesktops().contains(QStringLiteral("KDE")) ||
         (compositor_ && compositor_->windowsName() == wayland::plasmaWindowsName);
}

std::unique_ptr<copy::CopyKey> DesktopServices::createPortalKey(SystemLog& log) const {
  portal::ModifierHabits habits;
  if (heldModifiers_) {
    habits.held = [modifiers = heldModifiers_, keys = std::make_shared<gnome::XwaylandKeys>()] {
      const auto known = keys->flags();
      return known ? *known : modifiers->flags();
    };
  } else if (std::shared_ptr states = wayland::KeyStates::create(Deadline::in(connectSeconds))) {
    habits.held = [states] { return states->modifiers(); };
  } else if (isKwin()) {
    habits.released = wayland::kwinReleasesHeldKeys();
    if (!habits.released) {
      log.write(
          QStringLiteral("Tavin: KWin tells no held keys, so no copy is made: it finds no "
                         "desktop file of this program, or is too old"));
      return nullptr;
    }
  }
  return std::make_unique<portal::PortalKeyboard>(std::make_shared<portal::RemoteDesktop>(log),
                                                  std::move(habits));
}

std::unique_ptr<copy::CopyKey> DesktopServices::createKey(const QString& kind,
                                                          SystemLog& log) const {
  if (kind == "virtual-keyboard")
    return wayland::VirtualKeyboard::create();
  if (kind == "fake-input")
    return wayland::FakeInput::create();
  if (kind == "portal")
    return createPortalKey(log);
  return kind == "xtest" ? x11::X11Keyboard::create() : nullptr;
}

std::unique_ptr<copy::CopyKey> DesktopServices::createKey(SystemLog& log) {
  for (const QString& kind : keyboard_.split(' ')) {
    if (auto key = createKey(kind, log)) {
      keyboard_ = kind;
      return key;
    }
  }
  keyboard_ = "none";
  return nullptr;
}

std::optional<capture::Capture> DesktopServices::createCapture(SystemLog& log) {
  if (xwayland_)
    heldModifiers_ = std::make_shared<gnome::HeldModifiers>(QDBusConnection::sessionBus());
  auto clipboard = xwayland_ && clipboard_ == "x11"
                       ? gnome::XwaylandPasteboard::create(x11::createClipboard)
                       : createClipboard(clipboard_, compositor_);
  auto windows = createWindows();
  if (!clipboard || !windows)
    return std::nullopt;
  return capture::assembleCapture(log, {std::move(windows), std::move(*clipboard), createKey(log)});
}

std::function<void()> DesktopServices::displayBell() const {
  return display_ && !compositor_ && !xwayland_ ? x11::ringDisplayBell
                                                : std::function<void()>([] {});
}

QString DesktopServices::description() const {
  if (!compositor_ && !xwayland_)
    return QStringLiteral("X11");
  const QString clipboard = clipboard_ == "data-control"
                                ? QString::fromStdString(compositor_->clipboardName())
                                : clipboard_;
  return QString("Wayland, clipboard %1, keyboard %2, windows %3, Qt %4")
      .arg(clipboard, keyboard_,
           windows_ == "compositor" ? QString::fromStdString(compositor_->windowsName())
                                    : QStringLiteral("Xwayland's"),
           qtPlatform());
}

}  // namespace tavin
