#include "platform/kde/GlobalAccelMessages.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QList>

namespace tavin::kde {

// As the service writes it: up to four keys to be pressed one after the other.
struct KeySequence {
  QList<int> keys;
};

QDBusArgument& operator<<(QDBusArgument& argument, const KeySequence& sequence) {
  argument.beginStructure();
  argument << sequence.keys;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, KeySequence& sequence) {
  argument.beginStructure();
  argument >> sequence.keys;
  argument.endStructure();
  return argument;
}

namespace {

// Flags of setShortcutKeys. Without the second a key stored earlier comes back in place of ours.
constexpr uint setPresent = 2;
constexpr uint noAutoloading = 4;

const QString keySequences = QStringLiteral("a(ai)");

QDBusMessage call(const QString& method) {
  QDBusMessage message =
      QDBusMessage::createMethodCall(globalAccelService, QStringLiteral("/kglobalaccel"),
                                     QStringLiteral("org.kde.KGlobalAccel"), method);
  // KWin itself is the service; what the bus would start in its place hears no keys.
  message.setAutoStartService(false);
  return message;
}

QStringList idOf(const Action& action) {
  return {componentName, action.name, QStringLiteral("Tavin"), action.title};
}

}  // namespace

QDBusMessage registration(const Action& action) {
  QDBusMessage message = call(QStringLiteral("doRegister"));
  message << idOf(action);
  return message;
}

QDBusMessage keyRequest(const Action& action) {
  qDBusRegisterMetaType<KeySequence>();
  qDBusRegisterMetaType<QList<KeySequence>>();
  QDBusMessage message = call(QStringLiteral("setShortcutKeys"));
  const QList<KeySequence> wanted{{{action.key, 0, 0, 0}}};
  message << idOf(action) << QVariant::fromValue(wanted) << (setPresent | noAutoloading);
  return message;
}

bool isGranted(const QDBusMessage& answer, const Action& action) {
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != keySequences)
    return false;
  const auto granted = qdbus_cast<QList<KeySequence>>(answer.arguments().constFirst());
  return granted.size() == 1 && granted.front().keys == QList<int>{action.key, 0, 0, 0};
}

QDBusMessage removal(const Action& action) {
  QDBusMessage message = call(QStringLiteral("unregister"));
  message << componentName << action.name;
  return message;
}

}  // namespace tavin::kde
