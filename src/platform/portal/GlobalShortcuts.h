#pragma once

#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/bus/BusSignal.h"
#include "platform/bus/SessionBus.h"
#include "platform/portal/Request.h"
#include "platform/portal/Shortcut.h"
#include "platform/shortcuts/Service.h"

namespace tavin::portal {

// Global shortcuts through the desktop's portal, over a bus connection of our own. The desktop asks
// the user, once for each pair of combinations, and remembers the answer; so each registration is
// answered later. What it remembers is asked for first: the dialog is opened only where something
// is missing, and never again once it was declined. Main thread only.
class GlobalShortcuts final : public shortcuts::Service {
 public:
  // In words who holds a combination already, where the portal would bind it all the same and its
  // presses would never come.
  using Holder = std::function<std::optional<QString>(const shortcuts::KeyCombination&)>;

  // `pressed` is told of each press before its handler; may be empty.
  explicit GlobalShortcuts(Holder holder, std::function<void()> pressed = {});
  ~GlobalShortcuts() override;

  shortcuts::Answer add(const shortcuts::KeyCombination& combination) override;
  void remove(const shortcuts::KeyCombination& combination) override;

 private:
  // What the portal is asked for, and what it and the user have answered.
  struct AskedShortcut {
    shortcuts::KeyCombination combination;
    Shortcut wanted;
    bool active = false;
    bool answered = false;
    bool declined = false;
    bool held = false;
  };

  void portalLeft();
  // Once the event loop runs: what is asked for in one go is one question to the user.
  void startOverSoon();
  void startOver();
  // The steps, each after the answer to the one before.
  void createSession();
  void list();
  void bind();

  void ask(const QString& method, QVariantList arguments, QVariantMap options,
           Request::Answer answer);
  void closeSession();
  bool lacksAny(const QList<Shortcut>& given) const;
  void take(const QList<Shortcut>& given);
  void refuseAll(const QString& reason);
  void settle(const std::shared_ptr<AskedShortcut>& asked, bool active, const QString& reason);
  void listen();
  AskedShortcut* askedIn(const QDBusMessage& signal) const;

  const Holder holder_;
  const std::function<void()> pressed_;
  const bus::OwnConnection bus_{QStringLiteral("portal")};
  QDBusServiceWatcher owners_;
  std::vector<std::unique_ptr<bus::BusSignal>> signals_;
  std::vector<std::shared_ptr<AskedShortcut>> asked_;
  std::unique_ptr<Request> request_;  // The one under way.
  QDBusObjectPath session_;           // Empty where there is none.
  bool startsSoon_ = false;
  bool creating_ = false;      // A session that cannot be closed yet.
  bool portalGone_ = false;    // Or it was never there.
  QElapsedTimer lastRestart_;  // Of the portal, by us.
};

}  // namespace tavin::portal
