#include "platform/PlatformFactory.h"

#include <QCoreApplication>
#include <cstdio>
#include <utility>

#include "engine/CurlSession.h"
#include "platform/HotkeyChoice.h"
#include "platform/ThreadQueue.h"
#include "platform/desktop/AutostartLoginItem.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/QtApplication.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/desktop/SessionBus.h"
#include "platform/desktop/SessionBusControl.h"
#include "platform/desktop/SettingsUserDefaults.h"
#include "platform/gnome/HeldKeyFilter.h"
#include "platform/posix/PosixProcessLauncher.h"
#include "platform/posix/PosixSystemLog.h"
#include "platform/tray/ModalAlerts.h"
#include "platform/tray/Tray.h"
#include "platform/x11/Capture.h"
#include "platform/x11/Connection.h"
#include "platform/x11/DisplayBell.h"

namespace tavin {
namespace {

// A hung request keeps its thread; it must not keep the next one waiting.
constexpr std::size_t globalQueueThreads = 64;

StartedPlatform cannotStart(const QByteArray& reason) {
  std::fprintf(stderr, "tavin: %s\n", reason.constData());
  return {.platform = nullptr, .exitCode = 1};
}

void addHotkeys(Platform& platform) {
  ChosenHotkeys chosen = chooseHotkeys(*platform.log);
  platform.hotkeys = std::move(chosen.service);
  if (chosen.road == HotkeyRoad::gnome)
    platform.remoteControl = std::make_unique<gnome::HeldKeyFilter>(
        QDBusConnection::sessionBus(), std::move(platform.remoteControl));
  if (chosen.release)
    platform.lastDuties.push_back(std::move(chosen.release));
}

// What every desktop has in the same way.
void addCommonParts(Platform& platform) {
  platform.bundle = Bundle::main();
  platform.mainQueue = std::make_unique<desktop::QtMainQueue>();
  platform.globalQueue = std::make_unique<ThreadQueue>(globalQueueThreads);
  platform.makeSerialQueue = [] { return std::make_unique<ThreadQueue>(1); };
  platform.userDefaults = std::make_unique<desktop::SettingsUserDefaults>();
  platform.urlSession = std::make_unique<CurlSession>(*platform.log);
  platform.processLauncher = std::make_unique<posix::PosixProcessLauncher>();
  platform.loginItem =
      std::make_unique<desktop::AutostartLoginItem>(QCoreApplication::applicationFilePath());
  platform.alerts = createAlertPresenter();
}

void addX11Parts(Platform& platform, x11::Capture capture) {
  platform.accessibility = std::move(capture.accessibility);
  platform.keyboard = std::move(capture.keyboard);
  platform.pasteboard = std::move(capture.pasteboard);
  platform.lastDuties.push_back(std::move(capture.handOverClipboard));
  platform.makeStatusItem = [commandChosen = std::move(capture.menuCommandChosen)] {
    return createStatusItem(commandChosen);
  };
  addHotkeys(platform);
  platform.workspace = std::make_unique<desktop::DesktopWorkspace>(x11::ringDisplayBell);
}

}  // namespace

StartedPlatform startPlatform(int& argc, char** argv) {
  // Qt would end the process with a paragraph about its plug-ins.
  if (!x11::Connection::open())
    return cannotStart(qEnvironmentVariableIsEmpty("DISPLAY")
                           ? QByteArray("no X display: DISPLAY is not set")
                           : "no X display: cannot connect to " + qgetenv("DISPLAY"));
  // Before Qt is started, which looks for the bus itself.
  desktop::sessionBusIsUsable();
  auto platform = std::make_unique<Platform>();
  platform->log = std::make_unique<posix::PosixSystemLog>();
  platform->application =
      std::make_unique<desktop::QtApplication>(argc > 0 ? argv[0] : "tavin", "xcb");

  const QDBusConnection bus = QDBusConnection::sessionBus();
  auto remoteControl = std::make_unique<desktop::SessionBusControl>(bus);
  if (!remoteControl->takeName()) {
    remoteControl->activateOther();
    return {.platform = nullptr, .exitCode = 0};
  }
  platform->remoteControl = std::move(remoteControl);

  auto capture = x11::createCapture(*platform->log);
  if (!capture)
    return cannotStart("the X display refuses another connection");
  addCommonParts(*platform);
  addX11Parts(*platform, std::move(*capture));
  platform->log->write(QStringLiteral("Tavin: X11, %1")
                           .arg(bus.isConnected() ? QStringLiteral("with the session bus")
                                                  : QStringLiteral("without a session bus")));
  return {.platform = std::move(platform), .exitCode = 0};
}

}  // namespace tavin
