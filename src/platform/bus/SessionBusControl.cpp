#include "platform/bus/SessionBusControl.h"

#include <QDBusMessage>
#include <QTimer>
#include <utility>

#include "platform/ActivationToken.h"

namespace tavin::bus {
namespace {

const QString serviceName = QStringLiteral("app.tavin.Tavin");
const QString objectPath = QStringLiteral("/app/tavin/Tavin");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

constexpr int nameDeadline = 1000;  // Milliseconds.
constexpr int activateDeadline = 2000;
constexpr uint doNotQueue = 4;       // Flag of RequestName.
constexpr uint nameIsElsewhere = 3;  // Answer of RequestName.

const char introspection[] = R"(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open">
    <arg type="as" name="uris" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg type="s" name="action_name" direction="in"/>
    <arg type="av" name="parameter" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
</interface>
)";

QDBusMessage callToBus(const QString& method) {
  return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                        QStringLiteral("/org/freedesktop/DBus"),
                                        QStringLiteral("org.freedesktop.DBus"), method);
}

// Older callers have only the name that it had before Wayland.
void keepTokenOf(const QVariant& platformDataArgument) {
  const auto platformData = qdbus_cast<QVariantMap>(platformDataArgument);
  const QString token = platformData.value(QStringLiteral("activation-token")).toString();
  keepActivationToken(token.isEmpty()
                          ? platformData.value(QStringLiteral("desktop-startup-id")).toString()
                          : token);
}

void call(const std::function<void()>& action) {
  if (action)
    action();
}

}  // namespace

// The object is there before the name is taken, so that whoever finds the name finds the object.
SessionBusControl::SessionBusControl(const QDBusConnection& bus)
    : BusObject(bus, objectPath, applicationInterface, QLatin1String(introspection)) {
  const QVariantList nothing;
  addMethod("Activate", "a{sv}", [this, nothing](const QVariantList& arguments) {
    keepTokenOf(arguments.constLast());
    receive(&RemoteActions::activate);
    return nothing;
  });
  // Nothing is read from files.
  addMethod("Open", "asa{sv}", [nothing](const QVariantList&) { return nothing; });
  addMethod("ActivateAction", "sava{sv}",
            [this, nothing](const QVariantList& arguments) -> std::optional<QVariantList> {
              const auto task = taskOf(arguments.at(0).toString());
              if (!task)
                return std::nullopt;
              keepTokenOf(arguments.constLast());
              task();
              return nothing;
            });
}

SessionBusControl::~SessionBusControl() {
  if (holdsName_) {
    QDBusMessage release = callToBus(QStringLiteral("ReleaseName"));
    release.setArguments({serviceName});
    QDBusConnection(bus()).send(release);
  }
}

bool SessionBusControl::takeName() {
  if (!bus().isConnected())
    return true;
  QDBusMessage request = callToBus(QStringLiteral("RequestName"));
  request.setArguments({serviceName, doNotQueue});
  const QDBusMessage reply = bus().call(request, QDBus::Block, nameDeadline);
  const bool answered = reply.type() == QDBusMessage::ReplyMessage;
  if (answered && reply.arguments().value(0).toUInt() == nameIsElsewhere)
    return false;
  holdsName_ = answered;
  return true;
}

void SessionBusControl::activateOther() {
  QDBusMessage activate = QDBusMessage::createMethodCall(
      serviceName, objectPath, applicationInterface, QStringLiteral("Activate"));
  activate.setArguments({QVariantMap()});
  bus().call(activate, QDBus::Block, activateDeadline);
}

void SessionBusControl::serve(RemoteActions actions) {
  actions_ = std::move(actions);
  for (const Request request : std::exchange(early_, {})) carryOut(request);
}

std::function<void()> SessionBusControl::taskOf(const QString& action) {
  if (const auto key = keys_.find(action); key != keys_.end())
    return key->second;
  const auto request = requestNamed(action);
  return request ? [this, request] { receive(*request); } : std::function<void()>();
}

void SessionBusControl::serveKey(const QString& action, std::function<void()> ran) {
  keys_[action] = std::move(ran);
}

std::optional<SessionBusControl::Request> SessionBusControl::requestNamed(const QString& action) {
  static const std::map<QString, Request> requests = {
      {QStringLiteral("menu"), &RemoteActions::activate},
      {QStringLiteral("speak"), &RemoteActions::speakOrStop},
      {QStringLiteral("pause"), &RemoteActions::togglePause},
      {QStringLiteral("stop"), &RemoteActions::stop},
      {QStringLiteral("next"), &RemoteActions::nextSentence},
      {QStringLiteral("previous"), &RemoteActions::previousSentence},
      {QStringLiteral("next-paragraph"), &RemoteActions::nextParagraph},
      {QStringLiteral("previous-paragraph"), &RemoteActions::previousParagraph},
      {QStringLiteral("repeat"), &RemoteActions::repeatSentence},
      {QStringLiteral("faster"), &RemoteActions::faster},
      {QStringLiteral("slower"), &RemoteActions::slower}};
  const auto found = requests.find(action);
  return found == requests.end() ? std::nullopt : std::optional(found->second);
}

void SessionBusControl::receive(Request request) {
  if (!actions_) {
    early_.push_back(request);
    return;
  }
  // Not from inside the bus's dispatch: the caller has its answer first.
  QTimer::singleShot(0, this, [this, request] { carryOut(request); });
}

void SessionBusControl::carryOut(Request request) { call((*actions_).*request); }

}  // namespace tavin::bus
