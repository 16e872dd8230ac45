#include "platform/DesktopServices.h"

#include <QDir>
#include <QLibraryInfo>
#include <utility>

#include "platform/atspi/AssembleCapture.h"
#include "platform/wayland/FakeInput.h"
#include "platform/wayland/VirtualKeyboard.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandWindowSystem.h"
#include "platform/x11/Connection.h"
#include "platform/x11/CreateCapture.h"
#include "platform/x11/DisplayBell.h"

namespace tavin {
namespace {

// The first that serves is taken.
constexpr const char* waylandKeyboards = "virtual-keyboard fake-input";

// What is forced, else what serves in such a session.
QString chosen(const char* variable, const char* onWayland, const char* onX11, bool wayland) {
  const QString forced = qEnvironmentVariable(variable);
  return forced.isEmpty() ? QString(QLatin1String(wayland ? onWayland : onX11)) : forced;
}

bool qtSpeaksWayland() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
  return !plugins.entryList({"libqwayland*"}, QDir::Files).isEmpty();
}

std::optional<Clipboard> createClipboard(const QString& kind,
                                         const std::shared_ptr<wayland::Compositor>& compositor) {
  if (kind == "x11")
    return x11::createClipboard();
  if (kind != "data-control" || !compositor)
    return std::nullopt;
  // No protocol hands a clipboard over: the managers there have read it already.
  return Clipboard{std::make_unique<wayland::WaylandPasteboard>(compositor), [] {}};
}

std::unique_ptr<Keyboard> createKeyboard(const QString& kind, std::function<bool()> mayCopy) {
  if (kind == "virtual-keyboard")
    return wayland::VirtualKeyboard::create(std::move(mayCopy));
  if (kind == "fake-input")
    return wayland::FakeInput::create(std::move(mayCopy));
  return kind == "xtest" ? x11::createKeyboard(std::move(mayCopy)) : nullptr;
}

}  // namespace

DesktopServices::DesktopServices()
    : compositor_(wayland::Compositor::connect()),
      display_(x11::Connection::open() != nullptr),
      clipboard_(chosen("TAVIN_CLIPBOARD", "data-control", "x11", compositor_ != nullptr)),
      keyboard_(chosen("TAVIN_KEYBOARD", waylandKeyboards, "xtest", compositor_ != nullptr)) {}

DesktopServices::~DesktopServices() = default;

QByteArray DesktopServices::obstacle() const {
  if (display_ || (compositor_ && qtSpeaksWayland()))
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
  return compositor_ && qtSpeaksWayland() ? "wayland" : "xcb";
}

std::optional<Capture> DesktopServices::createCapture(SystemLog& log) {
  auto clipboard = createClipboard(clipboard_, compositor_);
  auto windows = compositor_ ? std::make_unique<wayland::WaylandWindowSystem>(compositor_)
                             : x11::createWindowSystem();
  if (!clipboard || !windows)
    return std::nullopt;
  const auto makeKeyboard = [this](const std::function<bool()>& mayCopy) {
    for (const QString& kind : keyboard_.split(' ')) {
      if (auto keyboard = createKeyboard(kind, mayCopy)) {
        keyboard_ = kind;
        return keyboard;
      }
    }
    keyboard_ = "none";
    return std::unique_ptr<Keyboard>();
  };
  return atspi::assembleCapture(log, {std::move(windows), std::move(*clipboard), makeKeyboard});
}

std::function<void()> DesktopServices::displayBell() const {
  return display_ && !compositor_ ? x11::ringDisplayBell : std::function<void()>([] {});
}

QString DesktopServices::description() const {
  if (!compositor_)
    return QStringLiteral("X11");
  const QString clipboard = clipboard_ == "data-control"
                                ? QString::fromStdString(compositor_->clipboardName())
                                : clipboard_;
  return QString("Wayland, clipboard %1, keyboard %2, windows %3, Qt %4")
      .arg(clipboard, keyboard_, QString::fromStdString(compositor_->windowsName()), qtPlatform());
}

}  // namespace tavin
