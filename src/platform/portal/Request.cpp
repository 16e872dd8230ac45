#include "platform/portal/Request.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <limits>
#include <utility>

#include "platform/portal/Portal.h"

namespace tavin::portal {
namespace {

constexpr int whenItMay = std::numeric_limits<int>::max();

QString newToken() {
  static int count = 0;
  return QStringLiteral("tavin%1").arg(++count);
}

// Known before the call, so that the answer cannot come before we listen.
QString pathOf(const QDBusConnection& bus, const QString& token) {
  const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
  return QStringLiteral("/org/freedesktop/portal/desktop/request/") + sender + u'/' + token;
}

}  // namespace

Request::Request(const QDBusConnection& bus, const QString& interface, const QString& method,
                 QVariantList arguments, QVariantMap options, Answer answer)
    : answer_(std::move(answer)) {
  const QString token = newToken();
  response_ = std::make_unique<bus::BusSignal>(
      bus,
      bus::BusSignal::Source{portalService, pathOf(bus, token),
                             QStringLiteral("org.freedesktop.portal.Request"),
                             QStringLiteral("Response")},
      [this](const QDBusMessage& response) {
        // Results of another type would end the process: the D-Bus library reads on regardless.
        if (response.signature() != QLatin1String("ua{sv}"))
          return finish(callFailed, {});
        finish(response.arguments().at(0).toInt(),
               qdbus_cast<QVariantMap>(response.arguments().at(1)));
      });
  options.insert(QStringLiteral("handle_token"), token);
  QDBusMessage call = portalCall(interface, method);
  call.setArguments(arguments << options);
  auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(call, whenItMay), response_.get());
  QObject::connect(reply, &QDBusPendingCallWatcher::finished, response_.get(),
                   [this](QDBusPendingCallWatcher* done) {
                     done->deleteLater();
                     // Later: the answer may destroy what is calling here.
                     if (done->isError())
                       QTimer::singleShot(0, response_.get(), [this] { finish(callFailed, {}); });
                   });
}

void Request::finish(int code, const QVariantMap& results) {
  const Answer answer = std::exchange(answer_, nullptr);
  if (answer)
    answer(code, results);
}

}  // namespace tavin::portal
