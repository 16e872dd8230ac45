#pragma once

#include <QJsonObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "menu/MenuController.h"
#include "platform/Application.h"
#include "selection/Selection.h"
#include "words/Words.h"

namespace tavin {

class EngineClient;
class Executor;
class HotkeyCenter;
class StatusItem;
class Timer;
struct EngineStatus;
struct Platform;
struct ShortcutPreset;

// The application controller: owns every long-lived object, connects the shortcuts and the menu to
// the speech commands, and shows the icon and the alerts.
//
// Main thread only, except where said. Must be created by std::make_shared: work under way keeps it
// alive, handlers and timers do not. Whether speech is going on is never remembered here but asked
// of the engine each time.
class AppDelegate final : public ApplicationDelegate,
                          public MenuTarget,
                          public std::enable_shared_from_this<AppDelegate> {
 public:
  // Not owned; both must outlive the controller. Starts nothing.
  AppDelegate(Platform& platform, HotkeyCenter& hotkeys);
  ~AppDelegate() override;

  void applicationDidFinishLaunching() override;
  void applicationWillTerminate() override;

  // Replaces both shortcuts by those of the chosen preset.
  void registerHotkeys() override;
  void registerHotkeys(const ShortcutPreset& preset);

  // The commands. Each queues one work item and returns; any thread.
  void speakOrStop() override;
  void speakSelection();
  void togglePause() override;
  void stop();

  // Says what went wrong, unless it is what was said last. Returns at once.
  void showError(const Words& message) override {
    showError(message, [] {});
  }
  // `answered` is the rest of the step that asks: it runs once the user has answered, or at once
  // where nothing is shown.
  void showError(const Words& message, std::function<void()> answered);
  // Explains that the Accessibility permission is missing. Returns at once.
  void showAccessibilityHelp();

  MenuController* menuController() { return menuController_.get(); }

 private:
  void setIcon(bool active);
  void tellMenuOfHotkeys();
  void serveRemoteActions();
  void showMenu();

  void speakSelectionNow();
  void postSpeech(const QString& text);
  // One of the engine's requests about the text that is being read. Any thread, returns at once.
  void askForText(const char* request, const QJsonObject& body);
  void watchPlayback();
  void pollPlayback(const std::shared_ptr<Timer>& timer);
  void evaluatePlayback(const std::optional<EngineStatus>& status,
                        const std::shared_ptr<Timer>& timer);
  void showPlayback(const std::optional<EngineStatus>& status, Timer& timer);
  // Both keep this controller alive until the step has run.
  void onMain(std::function<void()> step);
  void onWork(std::function<void()> step);

  Platform& platform_;
  HotkeyCenter& hotkeys_;
  const Selection selection_;
  const std::shared_ptr<EngineClient> engine_;
  // From launch on:
  std::unique_ptr<StatusItem> statusItem_;
  std::shared_ptr<MenuController> menuController_;
  std::shared_ptr<Timer> iconTimer_;  // May have been invalidated.
  // Serial: the engine requests of the speech commands, the permission test and the capture.
  const std::unique_ptr<Executor> work_;
  bool errorIsShown_ = false;         // By the watcher, and not answered yet.
  std::optional<QString> lastError_;  // The error shown last; never cleared.
};

}  // namespace tavin
