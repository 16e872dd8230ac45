#pragma once

#include <gtest/gtest.h>

#include "app/AppDelegate.h"
#include "fake/FakePlatform.h"
#include "hotkeys/HotkeyCenter.h"

namespace tavin::test {

// The program on fakes, launched where the test says so.
class LaunchedApp : public ::testing::Test {
 protected:
  LaunchedApp()
      : center(fakes.hotkeys, fakes.mainQueue, fakes.log),
        app(std::make_shared<AppDelegate>(fakes.platform, center)) {}

  // Tasks that no test ran hold the delegate, which owns their queue.
  ~LaunchedApp() override {
    if (app && fakes.work)
      fakes.work->drop();
  }

  // Launches, lets every queue run dry and forgets what was asked on the way.
  void launch() {
    app->applicationDidFinishLaunching();
    fakes.settle();
    fakes.journal.clear();
    fakes.engine.requests.clear();
  }

  const std::vector<std::string>& lines() const { return fakes.journal.lines(); }

  FakePlatform fakes;
  HotkeyCenter center;
  std::shared_ptr<AppDelegate> app;
};

}  // namespace tavin::test
