#include "platform/bus/BusObject.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <utility>

namespace tavin::bus {

namespace {
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
}

BusObject::BusObject(QDBusConnection bus, QString path, QString interface, QString description)
    : bus_(std::move(bus)),
      path_(std::move(path)),
      interface_(std::move(interface)),
      description_(std::move(description)) {
  bus_.registerVirtualObject(path_, this);
}

BusObject::~BusObject() { bus_.unregisterObject(path_); }

QString BusObject::introspect(const QString&) const { return description_; }

void BusObject::addMethod(const QString& name, const QString& signature, Handler handler) {
  methods_.insert(name, {signature, std::move(handler)});
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const bool own = message.interface() == interface_ || message.interface().isEmpty();
  if (!own && message.interface() != propertiesInterface)
    return false;
  const QDBusMessage reply = own ? answer(message) : answerProperties(message);
  if (message.isReplyRequired())
    connection.send(reply);
  return true;
}

QDBusMessage BusObject::answer(const QDBusMessage& message) {
  const auto method = methods_.constFind(message.member());
  if (method == methods_.cend())
    return message.createErrorReply(QDBusError::UnknownMethod,
                                    QStringLiteral("There is no method ") + message.member());
  if (message.signature() != method->signature)
    return message.createErrorReply(QDBusError::InvalidArgs,
                                    QStringLiteral("%1 takes arguments of type \"%2\"")
                                        .arg(message.member(), method->signature));
  const auto results = method->handler(message.arguments());
  if (!results)
    return message.createErrorReply(
        QDBusError::InvalidArgs,
        QStringLiteral("%1: there is nothing of this name or number").arg(message.member()));
  return message.createReply(*results);
}

QDBusMessage BusObject::answerProperties(const QDBusMessage& message) const {
  const QVariantList arguments = message.arguments();
  if (message.member() == QLatin1String("GetAll") && message.signature() == QLatin1String("s"))
    return message.createReply(properties());
  if (message.member() == QLatin1String("Get") && message.signature() == QLatin1String("ss")) {
    const QVariant value = properties().value(arguments.at(1).toString());
    if (!value.isValid())
      return message.createErrorReply(QDBusError::UnknownProperty, arguments.at(1).toString());
    return message.createReply(QVariant::fromValue(QDBusVariant(value)));
  }
  if (message.member() == QLatin1String("Set"))
    return message.createErrorReply(QDBusError::PropertyReadOnly, message.member());
  return message.createErrorReply(QDBusError::UnknownMethod, message.member());
}

void BusObject::emitSignal(const QString& name, const QVariantList& arguments) {
  QDBusMessage signal = QDBusMessage::createSignal(path_, interface_, name);
  signal.setArguments(arguments);
  bus_.send(signal);
}

}  // namespace tavin::bus
