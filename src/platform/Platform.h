#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/AlertPresenter.h"
#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/HotkeyService.h"
#include "platform/Keyboard.h"
#include "platform/LoginItem.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/ProcessLauncher.h"
#include "platform/RemoteActions.h"
#include "platform/StatusItem.h"
#include "platform/SystemLog.h"
#include "platform/UrlSession.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace tavin {

// Everything the program needs from the system, chosen once at start. Never null. Members are
// destroyed in reverse order, so the application and its loop go last.
struct Platform {
  Bundle bundle;
  std::unique_ptr<SystemLog> log;
  std::unique_ptr<Application> application;
  std::unique_ptr<MainQueue> mainQueue;
  std::unique_ptr<Executor> globalQueue;
  std::unique_ptr<UserDefaults> userDefaults;
  std::unique_ptr<UrlSession> urlSession;
  std::unique_ptr<ProcessLauncher> processLauncher;
  std::unique_ptr<Accessibility> accessibility;
  std::unique_ptr<Keyboard> keyboard;
  std::unique_ptr<Pasteboard> pasteboard;
  std::unique_ptr<HotkeyService> hotkeys;
  std::unique_ptr<AlertPresenter> alerts;
  std::unique_ptr<Workspace> workspace;
  std::unique_ptr<LoginItem> loginItem;
  std::unique_ptr<RemoteControl> remoteControl;
  // Makes the icon in the panel; asked once, at launch.
  std::function<std::unique_ptr<StatusItem>()> makeStatusItem;
  // Makes a queue that runs one task at a time on a thread of its own.
  std::function<std::unique_ptr<Executor>()> makeSerialQueue;
  // What gives others back what is theirs before the process ends, each bounded in time.
  std::vector<std::function<void()>> shutdownHooks;
};

}  // namespace tavin
