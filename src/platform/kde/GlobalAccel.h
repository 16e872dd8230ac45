#pragma once

#include <QDBusServiceWatcher>
#include <memory>
#include <vector>

#include "platform/bus/BusSignal.h"
#include "platform/bus/SessionBus.h"
#include "platform/kde/GlobalAccelMessages.h"
#include "platform/shortcuts/Service.h"

namespace tavin::kde {

// Global shortcuts of a Plasma session on Wayland: KGlobalAccel, asked over a bus connection of our
// own. It shows no dialog and tells a conflict. Registers again with a service that was restarted.
// A service that does not run, or does not answer within half a second, answers later. What is
// registered stays so, even for a program that was killed, until `release` or the next start.
// The key in the ANSI "R" position is found by the layouts that there are when it is registered.
// Main thread only.
class GlobalAccel final : public shortcuts::Service {
 public:
  GlobalAccel();
  ~GlobalAccel() override;

  shortcuts::Answer add(const shortcuts::KeyCombination& combination) override;
  void remove(const shortcuts::KeyCombination& combination) override;
  // Takes everything back, in at most half a second.
  void release() override;

 private:
  // What KGlobalAccel was asked for, and has answered.
  struct RegisteredAction {
    shortcuts::KeyCombination combination;
    Action action;
    bool active = false;
    bool held = false;
  };

  void ask(const std::shared_ptr<RegisteredAction>& registered);
  void take(const std::shared_ptr<RegisteredAction>& registered, const QDBusMessage& answer);
  void serviceChanged(const QString& owner);
  void pressed(const QDBusMessage& signal);
  void released(const QDBusMessage& signal);
  RegisteredAction* actionIn(const QDBusMessage& signal) const;

  const bus::OwnConnection bus_{QStringLiteral("kglobalaccel")};
  QDBusServiceWatcher owners_;
  const std::unique_ptr<bus::BusSignal> presses_;
  const std::unique_ptr<bus::BusSignal> releases_;
  std::vector<std::shared_ptr<RegisteredAction>> actions_;
};

}  // namespace tavin::kde
