// What the items of the menu do; their layout is MenuController.cpp.
#include <QJsonObject>

#include "engine/EngineClient.h"
#include "engine/EngineLog.h"
#include "hotkeys/ShortcutPreset.h"
#include "menu/MenuController.h"
#include "platform/AlertPresenter.h"
#include "platform/Application.h"
#include "platform/Executor.h"
#include "platform/LoginItem.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "words/Words.h"

namespace tavin {
namespace {

template <typename Value>
const Value* represented(const MenuItem& item) {
  return std::get_if<Value>(&item.representedObject);
}

}  // namespace

void MenuController::perform(const MenuItem& item) {
  switch (item.action) {
    case MenuAction::none:
      return;
    case MenuAction::speakOrStop:
      return app_.speakOrStop();
    case MenuAction::togglePause:
      return app_.togglePause();
    case MenuAction::selectShortcut:
      return selectShortcut(item);
    case MenuAction::selectEngine:
      return selectEngine(item);
    case MenuAction::selectVoice:
      return selectVoice(item);
    case MenuAction::selectSpeed:
      return selectSpeed(item);
    case MenuAction::setElevenLabsKey:
      return askForKey(QStringLiteral("elevenlabs"), QStringLiteral("ElevenLabs"));
    case MenuAction::setOpenAIKey:
      return askForKey(QStringLiteral("openai"), QStringLiteral("OpenAI"));
    case MenuAction::toggleLogin:
      return toggleLogin();
    case MenuAction::openLog:
      return openLog();
    case MenuAction::quit:
      return quit();
  }
}

void MenuController::selectShortcut(const MenuItem& item) {
  const auto* id = represented<QString>(item);
  if (!id)
    return;
  services_.userDefaults.setString(ShortcutPreset::defaultsKey, *id);
  app_.registerHotkeys();
}

void MenuController::selectEngine(const MenuItem& item) {
  const auto* name = represented<QString>(item);
  if (!name)
    return;
  configure(QStringLiteral("engine"), *name);
  refreshVoices(*name);
}

void MenuController::selectVoice(const MenuItem& item) {
  if (const auto* id = represented<QString>(item))
    configure(QStringLiteral("voice"), *id);
}

void MenuController::selectSpeed(const MenuItem& item) {
  if (const auto* speed = represented<double>(item))
    configure(QStringLiteral("speed"), *speed);
}

void MenuController::configure(const QString& key, const QJsonValue& value) {
  background([this, body = QJsonObject{{key, value}}] {
    services_.engine.post(QStringLiteral("config"), body);
  });
}

// A fetch that fails or finds nothing leaves an earlier list as it was. The menu that is open keeps
// its items; the list shows at the next opening.
void MenuController::refreshVoices(const QString& engine) {
  services_.globalQueue.async([weak = weak_from_this(), engine] {
    const auto self = weak.lock();
    if (!self)
      return;
    auto voices = self->services_.engine.voices(engine);
    self->services_.mainQueue.async([weak, engine, voices = std::move(voices)] {
      if (const auto controller = weak.lock(); controller && !voices.empty())
        controller->voiceCache_[engine] = voices;
    });
  });
}

void MenuController::background(std::function<void()> work) {
  services_.globalQueue.async([self = shared_from_this(), work = std::move(work)] { work(); });
}

void MenuController::askForKey(const QString& engine, const QString& label) {
  Alert alert;
  alert.messageText = QCoreApplication::translate("Alert", "%1 API key").arg(label);
  alert.informativeText = QCoreApplication::translate(
      "Alert", "Stored in your macOS Keychain. Leave empty to remove the key.");
  alert.secureField = true;
  alert.buttons = {QCoreApplication::translate("Alert", "Save"),
                   QCoreApplication::translate("Alert", "Cancel")};
  AlertPresenter& alerts = services_.alerts;
  alerts.activateIgnoringOtherApps();
  alerts.runModal(alert, [weak = weak_from_this(), engine](const AlertResponse& response) {
    const auto self = weak.lock();
    if (self && response.button == AlertResponse::firstButton)
      self->saveKey(engine, response.text);
  });
}

void MenuController::saveKey(const QString& engine, const QString& key) {
  background([this, engine, key] {
    const QString engineKey = QStringLiteral("engine");
    services_.engine.post(QStringLiteral("key"),
                          {{engineKey, engine}, {QStringLiteral("key"), key}});
    if (!key.isEmpty())
      services_.engine.post(QStringLiteral("config"), {{engineKey, engine}});
  });
  // A new key can change the voices on offer.
  voiceCache_.erase(engine);
}

void MenuController::toggleLogin() {
  LoginItem& login = services_.loginItem;
  const auto failure =
      login.status() == LoginItemStatus::enabled ? login.unregisterItem() : login.registerItem();
  if (failure)
    app_.showError(
        words("Alert", QT_TRANSLATE_NOOP("Alert", "Launch at Login failed: %1"), {*failure}));
}

void MenuController::openLog() { services_.workspace.openFile(EngineLog::path()); }

void MenuController::quit() { services_.application.terminate(); }

}  // namespace tavin
