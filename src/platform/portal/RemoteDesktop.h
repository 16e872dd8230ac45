#pragma once

#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/SystemLog.h"
#include "platform/bus/BusSignal.h"
#include "platform/bus/SessionBus.h"
#include "platform/copy/CopyChord.h"
#include "platform/portal/Request.h"
#include "platform/portal/RestoreToken.h"

namespace tavin::portal {

using copy::KeyStep;

// The user's permission to press keys, from the desktop's RemoteDesktop portal, over a bus
// connection of our own. It is asked for at the first need, beside whatever needs it, and then
// kept: the desktop shows that keys may come from us, and the user can stop it there. An answer in
// the dialog is never asked for again, save after a grant that has ended. Made and destroyed on the
// main thread.
class RemoteDesktop {
 public:
  // Asks nothing yet. `log` must outlive it.
  explicit RemoteDesktop(SystemLog& log, RestoreToken token = RestoreToken());
  ~RemoteDesktop();
  RemoteDesktop(const RemoteDesktop&) = delete;
  RemoteDesktop& operator=(const RemoteDesktop&) = delete;

  // The session that keys go through. None where there is no permission yet: then it is being asked
  // for, unless it was declined. Any thread, returns at once.
  std::optional<QDBusObjectPath> sessionOrAsk();
  // Returns when the desktop has done it all, in order; in a second at the latest. Where it refuses
  // a key or hangs, the session ends with all keys up. Not on the main thread.
  void type(const QDBusObjectPath& session, const std::vector<KeyStep>& steps);

 private:
  enum class State {
    closed,   // Nobody was asked, or the session has ended.
    asking,   // The answer will come.
    open,     // Keys may be typed.
    refused,  // For good.
  };

  // The steps, each after the answer to the one before. Main thread.
  void ask();
  void readOffer();
  void createSession();
  void selectDevices();
  void start();
  void take(const QVariantMap& results);
  void decline();

  void call(const QString& method, QVariantList arguments, QVariantMap options,
            Request::Answer answer);
  void giveUp(const QString& reason);
  void ended(const QString& reason);
  void portalLeft();
  void letGo(const QDBusObjectPath& session, const std::vector<KeyStep>& steps);
  void setState(State state);
  void closeSession();

  SystemLog& log_;
  const RestoreToken token_;
  // The desktop takes the keys away from whoever leaves the bus.
  const bus::OwnConnection bus_{QStringLiteral("remote-desktop")};
  QDBusServiceWatcher owners_;
  std::unique_ptr<bus::BusSignal> closed_;
  std::unique_ptr<Request> request_;  // The one under way.
  bool dialogIsOpen_ = false;         // The user is asked, or will be at once.
  uint version_ = 0;                  // Of the portal's interface.
  int questionsInVain_ = 0;           // That ended without the user's answer, one after another.

  std::mutex mutex_;  // For these two.
  State state_ = State::closed;
  QDBusObjectPath session_;
};

}  // namespace tavin::portal
