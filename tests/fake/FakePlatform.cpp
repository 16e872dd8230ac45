#include "fake/FakePlatform.h"

namespace tavin::test {

FakePlatform::FakePlatform()
    : log(place<FakeLog>(platform.log)),
      mainQueue(place<FakeMainQueue>(platform.mainQueue, journal)),
      globalQueue(place<FakeQueue>(platform.globalQueue, journal, QStringLiteral("global"))),
      userDefaults(place<FakeUserDefaults>(platform.userDefaults, journal)),
      engine(place<FakeEngine>(platform.urlSession, journal)),
      launcher(place<FakeProcessLauncher>(platform.processLauncher, journal)),
      accessibility(place<FakeAccessibility>(platform.accessibility, journal)),
      keyboard(place<FakeKeyboard>(platform.keyboard, journal)),
      pasteboard(place<FakePasteboard>(platform.pasteboard, journal)),
      hotkeys(place<FakeHotkeyService>(platform.hotkeys, journal)),
      alerts(place<FakeAlerts>(platform.alerts, journal)),
      workspace(place<FakeWorkspace>(platform.workspace, journal)),
      loginItem(place<FakeLoginItem>(platform.loginItem, journal)),
      remoteControl(place<FakeRemoteControl>(platform.remoteControl)) {
  platform.application = std::make_unique<FakeApplication>(journal);
  platform.makeSerialQueue = [this] {
    auto queue = std::make_unique<FakeQueue>(journal, QStringLiteral("work"));
    work = queue.get();
    return queue;
  };
  platform.makeStatusItem = [this] {
    journal.add(QStringLiteral("make status item"));
    auto item = std::make_unique<FakeStatusItem>(journal);
    statusItem = item.get();
    return item;
  };
}

void FakePlatform::settle() {
  while (mainQueue.queue.runOne() || (work && work->runOne()) || globalQueue.runOne()) {
  }
}

}  // namespace tavin::test
