#pragma once

#include <QCoreApplication>
#include <QJsonValue>
#include <QString>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "engine/EngineStatus.h"
#include "platform/Menu.h"

namespace tavin {

class AlertPresenter;
class Application;
class EngineClient;
class Executor;
class LoginItem;
class UserDefaults;
class Workspace;
struct ShortcutPreset;
struct Words;

// What the menu's items ask of the program. Main thread only.
class MenuTarget {
 public:
  virtual ~MenuTarget() = default;
  virtual void speakOrStop() = 0;
  virtual void togglePause() = 0;
  // The shortcut that is chosen now takes the place of the one before.
  virtual void registerHotkeys() = 0;
  virtual void showError(const Words& message) = 0;
};

// Lays out the status item's menu at each opening, from a fresh status of the engine, and
// carries out its commands. Every choice but the shortcut is the engine's: a command tells the
// engine, and the next opening shows what it then reports. Main thread only.
class MenuController final : public MenuDelegate,
                             public std::enable_shared_from_this<MenuController> {
  Q_DECLARE_TR_FUNCTIONS(Menu)

 public:
  static constexpr std::array speeds{0.8, 0.9, 1.0, 1.1, 1.25, 1.5, 1.75, 2.0};

  // What it needs; not owned, must outlive the controller.
  struct Services {
    EngineClient& engine;
    UserDefaults& userDefaults;
    LoginItem& loginItem;
    Executor& globalQueue;
    Executor& mainQueue;
    AlertPresenter& alerts;
    Workspace& workspace;
    Application& application;
  };

  // `app` is not owned and must outlive the controller, which must be made by std::make_shared.
  MenuController(MenuTarget& app, Services services);
  ~MenuController() override;

  Menu& menu() { return menu_; }

  // Waits for one status request of 0.4 s; then has the voices fetched, which show the next time.
  void menuNeedsUpdate(Menu& menu) override;
  // Waits for one of 0.05 s: nobody asked to see the menu.
  void menuNeedsMeasuring(Menu& menu) override;
  // An item that does not carry what its command reads does nothing.
  void perform(const MenuItem& item) override;

  // False when the last registration of the shortcuts failed.
  bool hotkeysAvailable = true;
  // False where no shortcut can exist, which is no other program's doing.
  bool hotkeysPossible = true;

 private:
  // MenuLayout.cpp: what it holds.
  void layOut(const std::optional<EngineStatus>& status);
  void addSpeechItems(const std::optional<EngineStatus>& status, const ShortcutPreset& preset);
  void addShortcutNote(Menu& submenu) const;
  void addShortcutMenu(const ShortcutPreset& current);
  void addStatusLine(const EngineStatus& status);
  void addEngineMenu(const EngineStatus& status);
  void addVoiceMenu(const EngineStatus& status);
  void addSpeedMenu(const EngineStatus& status);
  void addKeyMenu();
  void addFooter();

  // MenuCommands.cpp: what the items do.
  void selectShortcut(const MenuItem& item);
  void selectEngine(const MenuItem& item);
  void selectVoice(const MenuItem& item);
  void selectSpeed(const MenuItem& item);
  void askForKey(const QString& engine, const QString& label);
  void saveKey(const QString& engine, const QString& key);
  void toggleLogin();
  void openLog();
  void quit();
  void configure(const QString& key, const QJsonValue& value);
  void refreshVoices(const QString& engine);
  // Runs `work` on the pool with this controller kept alive.
  void background(std::function<void()> work);

  MenuTarget& app_;
  const Services services_;
  Menu menu_;
  std::map<QString, std::vector<Voice>> voiceCache_;  // The last list of each that was not empty.
};

}  // namespace tavin
