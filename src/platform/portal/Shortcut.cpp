#include "platform/portal/Shortcut.h"

#include <QDBusMetaType>
#include <QStringList>

#include "platform/shortcuts/ShortcutAction.h"

namespace tavin::portal {

using shortcuts::KeyCombination;

namespace {

const QString listKey = QStringLiteral("shortcuts");
const QString signature = QStringLiteral("a(sa{sv})");

// As the desktops' common way to write shortcuts has it.
QString triggerText(const KeyCombination& combination) {
  QStringList parts;
  if (combination.has(KeyCombination::control))
    parts << QStringLiteral("CTRL");
  if (combination.has(KeyCombination::alt))
    parts << QStringLiteral("ALT");
  if (combination.has(KeyCombination::shift))
    parts << QStringLiteral("SHIFT");
  if (combination.has(KeyCombination::super))
    parts << QStringLiteral("LOGO");
  parts << (combination.key == KeyCombination::Key::escape ? QStringLiteral("Escape")
                                                           : QStringLiteral("r"));
  return parts.join(u'+');
}

}  // namespace

QString Shortcut::trigger() const {
  return properties.value(QStringLiteral("trigger_description")).toString();
}

QDBusArgument& operator<<(QDBusArgument& argument, const Shortcut& shortcut) {
  argument.beginStructure();
  argument << shortcut.id << shortcut.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Shortcut& shortcut) {
  argument.beginStructure();
  argument >> shortcut.id >> shortcut.properties;
  argument.endStructure();
  return argument;
}

Shortcut wantedShortcut(const KeyCombination& combination) {
  const QString trigger = triggerText(combination);
  return {shortcuts::actionOf(combination) + u'-' + trigger.toLower().replace(u'+', u'-'),
          // GNOME's question names no program.
          {{QStringLiteral("description"), shortcuts::fullTitleOf(combination)},
           {QStringLiteral("preferred_trigger"), trigger}}};
}

QVariant toArgument(const QList<Shortcut>& shortcuts) {
  qDBusRegisterMetaType<Shortcut>();
  qDBusRegisterMetaType<QList<Shortcut>>();
  return QVariant::fromValue(shortcuts);
}

std::optional<QList<Shortcut>> shortcutsIn(const QVariantMap& results) {
  const QVariant list = results.value(listKey);
  if (list.userType() != qMetaTypeId<QDBusArgument>())
    return std::nullopt;
  const auto argument = list.value<QDBusArgument>();
  if (argument.currentSignature() != signature)
    return std::nullopt;
  return qdbus_cast<QList<Shortcut>>(argument);
}

}  // namespace tavin::portal
