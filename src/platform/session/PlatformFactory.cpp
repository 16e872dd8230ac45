#include "platform/session/PlatformFactory.h"

#include <QCoreApplication>
#include <cstdio>
#include <utility>

#include "platform/ActivationToken.h"
#include "platform/Installation.h"
#include "platform/ThreadQueue.h"
#include "platform/bus/SessionBus.h"
#include "platform/bus/SessionBusControl.h"
#include "platform/desktop/AutostartLoginItem.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/QtApplication.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/desktop/SettingsUserDefaults.h"
#include "platform/desktop/SignalWatch.h"
#include "platform/gnome/HeldModifiers.h"
#include "platform/http/LoopbackSession.h"
#include "platform/posix/OwnProcess.h"
#include "platform/posix/PosixProcessLauncher.h"
#include "platform/posix/PosixSystemLog.h"
#include "platform/session/CaptureServices.h"
#include "platform/session/NotingControl.h"
#include "platform/session/ShortcutServices.h"
#include "platform/session/Survey.h"
#include "platform/shortcuts/RegisteredHotkeys.h"
#include "platform/tray/AlertQueue.h"
#include "platform/tray/Tray.h"
#include "platform/wayland/CompositorEnd.h"
#include "platform/windowlink/WindowProgram.h"
#include "platform/x11/DisplayBell.h"
#include "platform/x11/DisplayWatch.h"

namespace tavin::session {
namespace {

// A hung request keeps its thread; it must not keep the next one waiting.
constexpr std::size_t globalQueueThreads = 64;

StartedPlatform cannotStart(const QByteArray& reason) {
  std::fprintf(stderr, "tavin: %s\n", reason.constData());
  return {.platform = nullptr, .exitCode = 1};
}

QString addHotkeys(Platform& platform, const Survey& survey, const ShortcutNeeds& needs,
                   std::function<void()> arrived) {
  ChosenShortcuts chosen = createShortcuts(survey, needs);
  auto hotkeys =
      std::make_unique<shortcuts::RegisteredHotkeys>(std::move(chosen.service), std::move(arrived));
  platform.shutdownHooks.push_back([&hotkeys = *hotkeys] { hotkeys.release(); });
  platform.hotkeys = std::move(hotkeys);
  return chosen.name;
}

// What every desktop has in the same way.
void addCommonParts(Platform& platform) {
  platform.bundle = Bundle::main();
  platform.mainQueue = std::make_unique<desktop::QtMainQueue>();
  platform.globalQueue = std::make_unique<ThreadQueue>(globalQueueThreads);
  platform.makeSerialQueue = [] { return std::make_unique<ThreadQueue>(1); };
  platform.userDefaults = std::make_unique<desktop::SettingsUserDefaults>();
  platform.urlSession = std::make_unique<http::LoopbackSession>(*platform.log);
  platform.processLauncher = std::make_unique<posix::PosixProcessLauncher>();
  platform.loginItem =
      std::make_unique<desktop::AutostartLoginItem>(QCoreApplication::applicationFilePath());
}

// The end of the display is the end of the session. Null where that is a compositor's.
std::shared_ptr<x11::DisplayWatch> watchDisplay(Application& application, const Survey& survey) {
  const auto ended = [&application] { application.terminate(); };
  if (survey.showsOnX11())
    return x11::DisplayWatch::create(ended);
  wayland::whenCompositorEnds(ended);
  return nullptr;
}

void addWindows(Platform& platform, const Survey& survey, std::function<void()> commandChosen) {
  auto program = std::make_shared<windowlink::WindowProgram>(
      *platform.processLauncher, *platform.log,
      windowlink::WindowProgram::Place{.executable = platform.bundle.windowProgram,
                                       .qtPlatform = QLatin1String(survey.qtPlatform())});
  platform.alerts = createAlertPresenter(program);
  platform.makeStatusItem = [commandChosen = std::move(commandChosen), program,
                             display = watchDisplay(*platform.application, survey)] {
    return createStatusItem(commandChosen, program, display);
  };
}

void addCapture(Platform& platform, capture::Capture capture) {
  platform.accessibility = std::move(capture.accessibility);
  platform.keyboard = std::move(capture.keyboard);
  platform.pasteboard = std::move(capture.pasteboard);
  platform.shutdownHooks.push_back(std::move(capture.handOver));
}

// Rings where no sound can be played.
std::function<void()> displayBell(const Survey& survey) {
  if (survey.display && !survey.isWaylandSession())
    return x11::ringDisplayBell;
  return [] {};
}

// The services that depend on the session.
StartedPlatform complete(std::unique_ptr<Platform> platform, Survey survey,
                         const QDBusConnection& bus, bus::SessionBusControl& control) {
  // GNOME tells no program which keys are held: whoever types there has to know of each press.
  const auto modifiers = survey.xwayland ? std::make_shared<gnome::HeldModifiers>(bus) : nullptr;
  auto chosen = createCapture(survey, bus, *platform->log, modifiers);
  if (!chosen)
    return cannotStart("the clipboard of this session cannot be reached");
  addCommonParts(*platform);
  const auto arrived = chosen->capture.shortcutArrived;
  addWindows(*platform, survey, chosen->capture.menuCommandChosen);
  addCapture(*platform, std::move(chosen->capture));
  platform->remoteControl =
      std::make_unique<NotingControl>(std::move(platform->remoteControl), [arrived, modifiers] {
        arrived();
        if (modifiers)
          gnome::HeldModifiers::noteIn(modifiers);
      });
  survey.askBus(bus);
  const QString shortcuts = addHotkeys(
      *platform, survey,
      {.bus = bus,
       .modifiers = modifiers,
       .serveKey = [&control](
                       const QString& action,
                       std::function<void()> ran) { control.serveKey(action, std::move(ran)); }},
      // X11 tells which keys are those of our own shortcuts.
      survey.isWaylandSession() ? arrived : [] {});
  platform->workspace = std::make_unique<desktop::DesktopWorkspace>(displayBell(survey));
  platform->log->write(QStringLiteral("Tavin: %1, shortcuts %2, %3, version %4")
                           .arg(chosen->description, shortcuts,
                                bus.isConnected() ? QStringLiteral("with the session bus")
                                                  : QStringLiteral("without a session bus"),
                                QLatin1String(version)));
  return {.platform = std::move(platform), .exitCode = 0};
}

}  // namespace

StartedPlatform startPlatform(int& argc, char** argv) {
  posix::openStandardFiles();
  posix::keepMemoryPrivate();
  keepActivationTokenOfStart();
  desktop::SignalWatch::endAtOnceMeanwhile();
  Survey survey = Survey::take();
  if (forcesMissingWindows(survey))
    return cannotStart("there is no Wayland compositor with data control");
  // Qt would end the process with a paragraph about its plug-ins.
  if (const QByteArray obstacle = survey.obstacle(); !obstacle.isEmpty())
    return cannotStart(obstacle);
  // Before Qt is started, which looks for the bus itself.
  bus::decideSessionBus();
  auto platform = std::make_unique<Platform>();
  platform->log = std::make_unique<posix::PosixSystemLog>();
  platform->application = std::make_unique<desktop::QtApplication>(argc > 0 ? argv[0] : "tavin");

  const QDBusConnection bus = bus::sessionBus();
  auto remoteControl = std::make_unique<bus::SessionBusControl>(bus);
  if (!remoteControl->takeName()) {
    remoteControl->activateOther();
    return {.platform = nullptr, .exitCode = 0};
  }
  bus::SessionBusControl& control = *remoteControl;
  platform->remoteControl = std::move(remoteControl);
  return complete(std::move(platform), std::move(survey), bus, control);
}

}  // namespace tavin::session
