#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#include <functional>
#include <memory>

#include "platform/bus/BusSignal.h"

namespace tavin::portal {

// How a portal answers: 0 done, 1 the user declined, 2 ended in another way; -1 where the portal
// refused the call, is not there or answers with something else.
constexpr int succeeded = 0;
constexpr int declined = 1;
constexpr int endedOtherwise = 2;
constexpr int callFailed = -1;

// One call of a desktop portal and the answer that follows it, after a dialog perhaps: whenever the
// user likes. An answer after this object's end is not heard. Main thread only.
class Request {
 public:
  using Answer = std::function<void(int code, const QVariantMap& results)>;

  // `arguments` are those before the options; the request's token is added to `options`. `answer`
  // is called once, from the event loop, and may destroy this object.
  Request(const QDBusConnection& bus, const QString& interface, const QString& method,
          QVariantList arguments, QVariantMap options, Answer answer);
  bool isPending() const { return answer_ != nullptr; }

 private:
  void finish(int code, const QVariantMap& results);

  Answer answer_;  // Empty once it was called.
  std::unique_ptr<bus::BusSignal> response_;
};

}  // namespace tavin::portal
