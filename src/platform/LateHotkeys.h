#pragma once

#include <memory>
#include <vector>

#include "platform/HotkeyChoice.h"
#include "platform/gnome/ShellWatch.h"
#include "platform/shortcuts/HotkeyServiceBase.h"

namespace tavin {

// The shortcuts of a GNOME whose shell is not there yet: refuses what is registered, and once the
// shell has told its version gives it to the service that is right for that. Main thread only.
class LateHotkeys final : public shortcuts::HotkeyServiceBase {
 public:
  using Choose = std::function<ChosenHotkeys(const QString& shellVersion)>;

  // `reason` says what is waited for.
  LateHotkeys(QString reason, Choose choose);
  ~LateHotkeys() override;

  HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                         EventHotKeyID id) override;
  void unregisterEventHotKey(const EventHotKeyRef& ref) override;

  // What the service owes the desktop at the end. The last duty.
  void release();

 private:
  struct HotKey;

  void become(ChosenHotkeys chosen);
  HotkeyRegistration registerNow(const std::shared_ptr<HotKey>& hotKey);
  void answer(const HotkeyRegistration& theirs);

  const QString reason_;
  ChosenHotkeys chosen_;  // Without a service until the shell is there.
  std::vector<std::shared_ptr<HotKey>> hotKeys_;
  gnome::ShellWatch watch_;
};

}  // namespace tavin
