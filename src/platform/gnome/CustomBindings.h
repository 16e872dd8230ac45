#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <memory>
#include <vector>

#include "platform/HotkeyService.h"

namespace tavin::gnome {

// Global shortcuts of GNOME before 48: custom key bindings in the user's settings that run the
// program's D-Bus actions. So a press arrives as such an action (see HeldKeyFilter), never through
// the event handler. Refuses a combination that something in GNOME's settings holds; answers later
// where the settings daemon, which hears the keys, does not run yet. What a killed Tavin left
// behind is overwritten, or removed where its key is refused. Main thread only.
class CustomBindings final : public HotkeyService {
 public:
  explicit CustomBindings(const QDBusConnection& bus);

  std::int32_t installEventHandler(std::function<void(EventHotKeyID)> callback) override;
  void installAnswerHandler(std::function<void(const HotkeyRegistration&)> callback) override;
  HotkeyRegistration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                         EventHotKeyID id) override;
  void unregisterEventHotKey(const EventHotKeyRef& ref) override;

  // Takes everything back, in at most half a second. The last duty.
  void release();

 private:
  struct HotKey;

  bool holds(const QString& action) const;
  void removeLater(const QString& action);
  bool daemonRuns();
  void daemonCame();

  QDBusConnection bus_;
  QDBusServiceWatcher owners_;
  std::vector<std::shared_ptr<HotKey>> hotKeys_;
  std::function<void(const HotkeyRegistration&)> answered_;
};

}  // namespace tavin::gnome
