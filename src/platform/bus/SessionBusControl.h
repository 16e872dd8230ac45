#pragma once

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "platform/RemoteActions.h"
#include "platform/bus/BusObject.h"

namespace tavin::bus {

// The program as an org.freedesktop.Application on the session bus: Activate, and ActivateAction
// with the actions that the desktop file lists. The well-known name is the lock that lets one Tavin
// run in a session. Without a bus, or when it does not answer within a second, Tavin runs unseen.
class SessionBusControl final : public RemoteControl, private BusObject {
 public:
  explicit SessionBusControl(const QDBusConnection& bus);
  ~SessionBusControl() override;

  // False where another process holds the name.
  bool takeName();
  // Has that process show its menu; gives up after two seconds.
  void activateOther();
  void serve(RemoteActions actions) override;
  // One more action, for a desktop whose shortcuts run commands: called at each of its runs. None
  // is served without a handler.
  void serveKey(const QString& action, std::function<void()> ran);

 private:
  using Request = std::function<void()> RemoteActions::*;
  static std::optional<Request> requestNamed(const QString& action);
  // What an action does; empty where there is no such action.
  std::function<void()> taskOf(const QString& action);

  QVariantMap properties() const override { return {}; }
  void receive(Request request);
  void carryOut(Request request);

  bool holdsName_ = false;
  std::optional<RemoteActions> actions_;
  std::vector<Request> early_;
  std::map<QString, std::function<void()>> keys_;
};

}  // namespace tavin::bus
