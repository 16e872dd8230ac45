#include "platform/atspi/Object.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRegularExpression>

namespace tavin::atspi {
namespace {

// No window has more objects side by side; what a hostile program sends beyond is not looked at.
constexpr std::size_t longestList = 20'000;

// The answer's first value, where it has that D-Bus type.
bool holds(const QDBusMessage& answer, const char* signature) {
  return isAnswer(answer) && !answer.arguments().isEmpty() &&
         answer.signature() == QLatin1String(signature) &&
         answer.arguments().first().canConvert<QDBusArgument>();
}

// Parts between dots, which begin with a digit only in the names that the bus itself gives.
bool isBusName(const QString& name) {
  static const QRegularExpression form(
      QStringLiteral("\\A(:[\\w-]+(\\.[\\w-]+)+|(?!\\d)[\\w-]+(\\.(?!\\d)[\\w-]+)+)\\z"));
  constexpr qsizetype longest = 255;
  return name.size() <= longest && form.match(name).hasMatch();
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const ObjectRef& object) {
  argument.beginStructure();
  argument << object.service << QDBusObjectPath(object.path);
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ObjectRef& object) {
  QDBusObjectPath path;
  argument.beginStructure();
  argument >> object.service >> path;
  argument.endStructure();
  object.path = path.path();
  // A message to anything else would end the process: the D-Bus library aborts.
  if (!isBusName(object.service))
    object.service.clear();
  return argument;
}

bool isAnswer(const QDBusMessage& answer) { return answer.type() == QDBusMessage::ReplyMessage; }

bool isLate(const QDBusMessage& answer) {
  return answer.errorName() == "org.freedesktop.DBus.Error.NoReply";
}

std::vector<ObjectRef> objectsIn(const QDBusMessage& answer) {
  std::vector<ObjectRef> objects;
  if (!holds(answer, "a(so)"))
    return objects;
  const auto list = answer.arguments().first().value<QDBusArgument>();
  list.beginArray();
  while (!list.atEnd() && objects.size() < longestList) {
    ObjectRef object;
    list >> object;
    if (!object.isNull())
      objects.push_back(object);
  }
  list.endArray();
  return objects;
}

ObjectRef objectIn(const QDBusMessage& answer) {
  ObjectRef object;
  if (holds(answer, "(so)"))
    answer.arguments().first().value<QDBusArgument>() >> object;
  const QVariant value = valueIn(answer);  // As a property it comes wrapped.
  if (object.isNull() && value.canConvert<QDBusArgument>()) {
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() == "(so)")
      argument >> object;
  }
  return object;
}

States statesIn(const QDBusMessage& answer) {
  if (!holds(answer, "au"))
    return States();
  QList<quint32> words;
  answer.arguments().first().value<QDBusArgument>() >> words;
  std::uint64_t bits = words.value(0);
  return States(bits | static_cast<std::uint64_t>(words.value(1)) << 32);
}

Role roleIn(const QDBusMessage& answer) { return static_cast<Role>(valueIn(answer).toUInt()); }

QVariant valueIn(const QDBusMessage& answer) {
  if (!isAnswer(answer) || answer.arguments().isEmpty())
    return {};
  const QVariant value = answer.arguments().first();
  return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

}  // namespace tavin::atspi
