#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/gnome/HeldModifiers.h"
#include "platform/gnome/PressFilter.h"
#include "platform/shortcuts/Service.h"

namespace tavin::gnome {

// Global shortcuts of GNOME before 48: custom key bindings in the user's settings that run D-Bus
// actions of their own. GNOME repeats those while the key is held, so the shell is asked at each
// how long the user has been idle; a press after a pause acts meanwhile. Refuses a combination that
// something in GNOME's settings holds; answers later where the settings daemon, which hears the
// keys, does not run yet or has ended. What a killed Tavin left behind is overwritten, or removed
// where its key is refused. Main thread only.
class CommandShortcuts final : public shortcuts::Service {
 public:
  // Has a D-Bus action call the function at each of its runs.
  using ServeKey = std::function<void(const QString& action, std::function<void()> ran)>;

  // Tells `modifiers`, which may be null, of each press that makes Tavin look for a selection.
  CommandShortcuts(const QDBusConnection& bus, const ServeKey& serveKey,
                   std::shared_ptr<HeldModifiers> modifiers);

  shortcuts::Answer add(const shortcuts::KeyCombination& combination) override;
  void remove(const shortcuts::KeyCombination& combination) override;
  // Takes everything back, in at most half a second.
  void release() override;

 private:
  // What GNOME's settings say for one combination.
  struct Binding {
    QString action;
    shortcuts::KeyCombination combination;
    bool active = false;
  };

  void commandRan(const QString& action);
  void press(const QString& action, Clock::time_point at);
  const Binding* bindingOf(const QString& action) const;
  void removeLater(const QString& action);
  bool daemonRuns();
  // It reads our keys in the settings when it comes.
  void daemonChanged(bool runs);

  QDBusConnection bus_;
  QDBusServiceWatcher owners_;
  const std::shared_ptr<HeldModifiers> modifiers_;
  std::vector<Binding> bindings_;
  std::map<QString, PressFilter> filters_;
};

}  // namespace tavin::gnome
