#include "app/AppDelegate.h"

#include "engine/EngineClient.h"
#include "hotkeys/HotkeyCenter.h"
#include "hotkeys/ShortcutPreset.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"

namespace tavin {

AppDelegate::AppDelegate(Platform& platform, HotkeyCenter& hotkeys)
    : platform_(platform),
      hotkeys_(hotkeys),
      selection_(platform),
      engine_(std::make_shared<EngineClient>(EngineClient::Services{
          *platform.urlSession,
          {*platform.processLauncher, *platform.mainQueue, *platform.log, platform.bundle}})),
      work_(platform.makeSerialQueue()) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
  statusItem_ = platform_.makeStatusItem();
  setIcon(false);
  menuController_ = std::make_shared<MenuController>(
      *this,
      MenuController::Services{*engine_, *platform_.userDefaults, *platform_.loginItem,
                               *platform_.globalQueue, *platform_.mainQueue, *platform_.alerts,
                               *platform_.workspace, *platform_.application});
  statusItem_->setMenu(&menuController_->menu());
  engine_->startIfNeeded();
  hotkeys_.setAnswerHandler([weak = weak_from_this()] {
    if (const auto self = weak.lock())
      self->tellMenuOfHotkeys();
  });
  registerHotkeys();
  if (!selection_.isTrusted(false))
    selection_.isTrusted(true);
  serveRemoteActions();
}

void AppDelegate::applicationWillTerminate() { engine_->shutdown(); }

void AppDelegate::setIcon(bool active) {
  require(statusItem_ != nullptr, "there is no status item before launch");
  statusItem_->setImage(
      active ? QStringLiteral("waveform.circle.fill") : QStringLiteral("waveform"),
      QStringLiteral("Tavin"));
}

void AppDelegate::registerHotkeys() {
  registerHotkeys(ShortcutPreset::current(*platform_.userDefaults));
}

void AppDelegate::registerHotkeys(const ShortcutPreset& preset) {
  require(menuController_ != nullptr, "there is no menu before launch");
  hotkeys_.unregisterAll();
  const auto weak = weak_from_this();
  hotkeys_.registerHotkey(preset.keyCode, preset.modifiers, [weak] {
    if (const auto self = weak.lock())
      self->speakOrStop();
  });
  // The pause shortcut is always the speak shortcut with Shift, on purpose no setting of its own.
  const int pauseModifiers = preset.modifiers | static_cast<int>(HotkeyModifiers::shiftKey);
  hotkeys_.registerHotkey(preset.keyCode, pauseModifiers, [weak] {
    if (const auto self = weak.lock())
      self->togglePause();
  });
  tellMenuOfHotkeys();
}

void AppDelegate::tellMenuOfHotkeys() {
  menuController_->hotkeysAvailable = hotkeys_.allActive();
  menuController_->hotkeysPossible = platform_.hotkeys->canGrant();
}

void AppDelegate::serveRemoteActions() {
  const auto weak = weak_from_this();
  const auto action = [weak](void (AppDelegate::*command)()) {
    return [weak, command] {
      if (const auto self = weak.lock())
        (*self.*command)();
    };
  };
  const auto inText = [weak](const char* request, const QJsonObject& body = {}) {
    return [weak, request, body] {
      if (const auto self = weak.lock())
        self->askForText(request, body);
    };
  };
  const QJsonObject paragraph{{QStringLiteral("by"), QStringLiteral("paragraph")}};
  platform_.remoteControl->serve({.activate = action(&AppDelegate::showMenu),
                                  .speakOrStop = action(&AppDelegate::speakOrStop),
                                  .togglePause = action(&AppDelegate::togglePause),
                                  .stop = action(&AppDelegate::stop),
                                  .nextSentence = inText("next"),
                                  .previousSentence = inText("previous"),
                                  .nextParagraph = inText("next", paragraph),
                                  .previousParagraph = inText("previous", paragraph),
                                  .repeatSentence = inText("repeat"),
                                  .faster = inText("faster"),
                                  .slower = inText("slower")});
}

void AppDelegate::showMenu() { statusItem_->popUpMenu(); }

}  // namespace tavin
