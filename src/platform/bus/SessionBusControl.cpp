#include "platform/bus/SessionBusControl.h"

#include <QDBusError>
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

// The signature that each method must be called with; empty where there is no such method.
QString signatureOf(const QString& method) {
  if (method == QLatin1String("Activate"))
    return QStringLiteral("a{sv}");
  if (method == QLatin1String("Open"))
    return QStringLiteral("asa{sv}");
  if (method == QLatin1String("ActivateAction"))
    return QStringLiteral("sava{sv}");
  return {};
}

// Older callers have only the name that it had before Wayland.
QString activationToken(const QVariantMap& platformData) {
  const QString token = platformData.value(QStringLiteral("activation-token")).toString();
  return token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString()
                         : token;
}

void call(const std::function<void()>& action) {
  if (action)
    action();
}

}  // namespace

SessionBusControl::SessionBusControl(const QDBusConnection& bus) : bus_(bus) {
  // Before the name is taken, so that whoever finds the name finds the object.
  bus_.registerVirtualObject(objectPath, this);
}

SessionBusControl::~SessionBusControl() {
  bus_.unregisterObject(objectPath);
  if (holdsName_) {
    QDBusMessage release = callToBus(QStringLiteral("ReleaseName"));
    release.setArguments({serviceName});
    bus_.send(release);
  }
}

bool SessionBusControl::takeName() {
  if (!bus_.isConnected())
    return true;
  QDBusMessage request = callToBus(QStringLiteral("RequestName"));
  request.setArguments({serviceName, doNotQueue});
  const QDBusMessage reply = bus_.call(request, QDBus::Block, nameDeadline);
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
  bus_.call(activate, QDBus::Block, activateDeadline);
}

void SessionBusControl::serve(RemoteActions actions) {
  actions_ = std::move(actions);
  for (const Request request : std::exchange(early_, {})) carryOut(request);
}

QString SessionBusControl::introspect(const QString&) const { return QLatin1String(introspection); }

bool SessionBusControl::handleMessage(const QDBusMessage& message,
                                      const QDBusConnection& connection) {
  // Callers may leave the interface out.
  const QString signature = signatureOf(message.member());
  const bool isOurs = message.interface() == applicationInterface ||
                      (message.interface().isEmpty() && !signature.isEmpty());
  if (!isOurs)
    return false;
  if (signature.isEmpty()) {
    connection.send(message.createErrorReply(QDBusError::UnknownMethod,
                                             QStringLiteral("There is no such method")));
    return true;
  }
  const auto task = taskIn(message);
  if (message.signature() != signature)
    connection.send(message.createErrorReply(
        QDBusError::InvalidArgs,
        QStringLiteral("The arguments must be of type %1").arg(signature)));
  else if (!task && message.member() == QLatin1String("ActivateAction"))
    connection.send(message.createErrorReply(QDBusError::InvalidArgs,
                                             QStringLiteral("There is no such action")));
  else if (message.isReplyRequired())
    connection.send(message.createReply());
  if (task && message.signature() == signature) {
    keepActivationToken(activationToken(qdbus_cast<QVariantMap>(message.arguments().constLast())));
    task();
  }
  return true;
}

std::function<void()> SessionBusControl::taskIn(const QDBusMessage& message) {
  const bool activates = message.member() == QLatin1String("Activate");
  if (!activates && message.member() != QLatin1String("ActivateAction"))
    return {};  // Nothing is read from files.
  const QString action = message.arguments().value(0).toString();
  if (const auto key = keys_.find(action); !activates && key != keys_.end())
    return key->second;
  const auto request = activates ? &RemoteActions::activate : requestNamed(action);
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
  // Not from inside the bus's dispatch: showing a menu may run an event loop of its own.
  QTimer::singleShot(0, this, [this, request] { carryOut(request); });
}

void SessionBusControl::carryOut(Request request) { call((*actions_).*request); }

}  // namespace tavin::bus
