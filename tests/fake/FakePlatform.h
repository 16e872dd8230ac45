#pragma once

#include "fake/FakeEngine.h"
#include "fake/FakeQueues.h"
#include "fake/FakeSelectionSource.h"
#include "fake/FakeServices.h"
#include "platform/Platform.h"

namespace tavin::test {

// A platform of fakes that write into one journal. The references stay valid as long as it lives;
// those to the work queue and the status item only once the program has asked for them.
class FakePlatform {
 public:
  FakePlatform();

  // Runs the tasks of all queues until none is left.
  void settle();

  Journal journal;
  Platform platform;
  FakeLog& log;
  FakeMainQueue& mainQueue;
  FakeQueue& globalQueue;
  FakeUserDefaults& userDefaults;
  FakeEngine& engine;
  FakeProcessLauncher& launcher;
  FakeAccessibility& accessibility;
  FakeKeyboard& keyboard;
  FakePasteboard& pasteboard;
  FakeHotkeyService& hotkeys;
  FakeAlerts& alerts;
  FakeWorkspace& workspace;
  FakeLoginItem& loginItem;
  FakeRemoteControl& remoteControl;
  FakeQueue* work = nullptr;             // Once made.
  FakeStatusItem* statusItem = nullptr;  // Once made.

 private:
  // Makes a fake, hands it to the platform and keeps a reference to it.
  template <typename Fake, typename Slot, typename... Args>
  static Fake& place(Slot& slot, Args&&... args) {
    auto fake = std::make_unique<Fake>(std::forward<Args>(args)...);
    Fake& reference = *fake;
    slot = std::move(fake);
    return reference;
  }
};

}  // namespace tavin::test
