// What the menu holds.
#include <algorithm>
#include <cmath>

#include "hotkeys/ShortcutPreset.h"
#include "menu/MenuController.h"
#include "menu/MenuItems.h"
#include "platform/LoginItem.h"
#include "platform/Workspace.h"

namespace tavin {
namespace {

constexpr int setupErrorLength = 60;
constexpr double speedTolerance = 0.001;
constexpr char noShortcuts[] = "no shortcuts";

// The fixed note below the presets, and the entries that the catalogues have for it: what a desktop
// itself does with the key, and where to change that.
constexpr const char* note[] = {
    QT_TRANSLATE_NOOP("Menu", "Hear a second, robotic voice too?"),
    QT_TRANSLATE_NOOP("Menu", "macOS Speak Selection also uses ⌥ Esc."),
    QT_TRANSLATE_NOOP("Menu", "Pick ⌃ Esc or ⌃⌥ R, or turn it off in"),
    QT_TRANSLATE_NOOP("Menu", "System Settings > Accessibility > Spoken Content.")};
[[maybe_unused]] constexpr const char* noteInSituations[][2] = {
    QT_TRANSLATE_NOOP3("Menu", "macOS Speak Selection also uses ⌥ Esc.", "GNOME"),
    QT_TRANSLATE_NOOP3("Menu", "Pick ⌃ Esc or ⌃⌥ R, or turn it off in", "GNOME"),
    QT_TRANSLATE_NOOP3("Menu", "System Settings > Accessibility > Spoken Content.", "GNOME"),
    QT_TRANSLATE_NOOP3("Menu", "macOS Speak Selection also uses ⌥ Esc.", "Plasma"),
    QT_TRANSLATE_NOOP3("Menu", "Pick ⌃ Esc or ⌃⌥ R, or turn it off in", "Plasma"),
    QT_TRANSLATE_NOOP3("Menu", "System Settings > Accessibility > Spoken Content.", "Plasma"),
    QT_TRANSLATE_NOOP3("Menu", "macOS Speak Selection also uses ⌥ Esc.", "Xfce"),
    QT_TRANSLATE_NOOP3("Menu", "Pick ⌃ Esc or ⌃⌥ R, or turn it off in", "Xfce"),
    QT_TRANSLATE_NOOP3("Menu", "System Settings > Accessibility > Spoken Content.", "Xfce"),
    QT_TRANSLATE_NOOP3("Menu", "macOS Speak Selection also uses ⌥ Esc.", "no shortcuts"),
    QT_TRANSLATE_NOOP3("Menu", "Pick ⌃ Esc or ⌃⌥ R, or turn it off in", "no shortcuts"),
    QT_TRANSLATE_NOOP3("Menu", "System Settings > Accessibility > Spoken Content.",
                       "no shortcuts")};

// The title that goes with `wanted`, or `wanted` itself where the list does not hold it.
template <typename List, typename Id, typename Title>
QString titleOf(const List& list, const QString& wanted, Id id, Title title) {
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const auto& entry) { return entry.*id == wanted; });
  return found == list.end() ? wanted : *found.*title;
}

}  // namespace

void MenuController::layOut(const std::optional<EngineStatus>& status) {
  menu_.items.clear();
  const ShortcutPreset& preset = ShortcutPreset::current(services_.userDefaults);
  addSpeechItems(status, preset);
  addShortcutMenu(preset);
  menu_.items.push_back(separatorItem());
  if (!status) {
    menu_.items.push_back(disabledLine(tr("Voice engine starting…")));
    addFooter();
    return;
  }
  addStatusLine(*status);
  addEngineMenu(*status);
  addVoiceMenu(*status);
  addSpeedMenu(*status);
  menu_.items.push_back(separatorItem());
  addKeyMenu();
  addFooter();
}

void MenuController::addSpeechItems(const std::optional<EngineStatus>& status,
                                    const ShortcutPreset& preset) {
  const bool active = status && status->isActive();
  const bool paused = status && status->state == QStringLiteral("paused");
  menu_.items.push_back(commandItem(active ? tr("Stop") : tr("Speak Selection"),
                                    MenuAction::speakOrStop, preset.label));
  menu_.items.push_back(commandItem(paused ? tr("Resume") : tr("Pause"), MenuAction::togglePause,
                                    preset.pauseLabel()));
  menu_.items.back().enabled = active;
  if (!hotkeysAvailable) {
    const QString line = hotkeysPossible
                             ? tr("\u26A0\uFE0E %1 is taken by another app")
                             : tr("\u26A0\uFE0E %1 is taken by another app", "no shortcuts");
    menu_.items.push_back(disabledLine(line.arg(preset.label)));
  }
}

void MenuController::addShortcutNote(Menu& submenu) const {
  const QByteArray situation = hotkeysPossible ? services_.workspace.desktop() : noShortcuts;
  for (const char* line : note)
    submenu.items.push_back(disabledLine(tr(line, situation.constData())));
}

void MenuController::addShortcutMenu(const ShortcutPreset& current) {
  auto submenu = std::make_shared<Menu>();
  for (const ShortcutPreset& preset : ShortcutPreset::all()) {
    submenu->items.push_back(
        choiceItem(preset.label, MenuAction::selectShortcut, preset.id, preset.id == current.id));
  }
  submenu->items.push_back(separatorItem());
  addShortcutNote(*submenu);
  menu_.items.push_back(submenuItem(tr("Shortcut: %1").arg(current.label), submenu));
}

void MenuController::addStatusLine(const EngineStatus& status) {
  if (status.ready)
    return;
  QString line = tr("Loading voices…");
  if (status.setupError) {
    line = tr("\u26A0\uFE0E Voice setup failed: %1")
               .arg(firstCharacters(status.setupErrorMessage.words().shown, setupErrorLength));
  } else if (status.download) {
    line = tr("Downloading voices… %1%").arg(status.downloadPercent());
  }
  menu_.items.push_back(disabledLine(line));
}

void MenuController::addEngineMenu(const EngineStatus& status) {
  auto submenu = std::make_shared<Menu>();
  for (const EngineInfo& info : status.engines) {
    const QString title = info.available ? info.label : tr("%1 (add API key)").arg(info.label);
    submenu->items.push_back(
        choiceItem(title, MenuAction::selectEngine, info.name, info.name == status.engine));
    // Without effect under automatic enabling: a back-end without its key can be chosen.
    submenu->items.back().enabled = info.available;
  }
  menu_.items.push_back(submenuItem(
      tr("Engine: %1")
          .arg(titleOf(status.engines, status.engine, &EngineInfo::name, &EngineInfo::label)),
      submenu));
}

void MenuController::addVoiceMenu(const EngineStatus& status) {
  static const std::vector<Voice> none;
  const auto cached = voiceCache_.find(status.engine);
  const auto& voices = cached == voiceCache_.end() ? none : cached->second;
  auto submenu = std::make_shared<Menu>();
  for (const Voice& voice : voices) {
    submenu->items.push_back(
        choiceItem(voice.name, MenuAction::selectVoice, voice.id, voice.id == status.voice));
  }
  if (voices.empty())
    submenu->items.push_back(disabledLine(tr("Loading…")));
  menu_.items.push_back(submenuItem(
      tr("Voice: %1").arg(titleOf(voices, status.voice, &Voice::id, &Voice::name)), submenu));
}

void MenuController::addSpeedMenu(const EngineStatus& status) {
  auto submenu = std::make_shared<Menu>();
  for (const double speed : speeds) {
    submenu->items.push_back(choiceItem(speedText(speed), MenuAction::selectSpeed, speed,
                                        std::abs(speed - status.speed) < speedTolerance));
  }
  menu_.items.push_back(submenuItem(tr("Speed: %1").arg(speedText(status.speed)), submenu));
}

void MenuController::addKeyMenu() {
  auto submenu = std::make_shared<Menu>();
  submenu->items = {commandItem(QStringLiteral("ElevenLabs…"), MenuAction::setElevenLabsKey),
                    commandItem(QStringLiteral("OpenAI…"), MenuAction::setOpenAIKey)};
  menu_.items.push_back(submenuItem(tr("Set API Key"), submenu));
}

void MenuController::addFooter() {
  MenuItem login = commandItem(tr("Launch at Login"), MenuAction::toggleLogin);
  login.state = services_.loginItem.status() == LoginItemStatus::enabled;
  menu_.items.push_back(login);
  menu_.items.push_back(commandItem(tr("Open Engine Log"), MenuAction::openLog));
  menu_.items.push_back(separatorItem());
  menu_.items.push_back(commandItem(tr("Quit Tavin"), MenuAction::quit));
}

}  // namespace tavin
