#include "platform/portal/Shortcut.h"

#include <QDBusMetaType>
#include <QStringList>

#include "platform/HotkeyService.h"
#include "platform/shortcuts/ShortcutAction.h"

namespace tavin::portal {
namespace {

const QString listKey = QStringLiteral("shortcuts");
const QString signature = QStringLiteral("a(sa{sv})");

// As the desktops' common way to write shortcuts has it.
QString triggerText(std::uint32_t keyCode, std::uint32_t modifiers) {
  using namespace HotkeyModifiers;
  QStringList parts;
  if ((modifiers & controlKey) != 0)
    parts << QStringLiteral("CTRL");
  if ((modifiers & optionKey) != 0)
    parts << QStringLiteral("ALT");
  if ((modifiers & shiftKey) != 0)
    parts << QStringLiteral("SHIFT");
  if ((modifiers & cmdKey) != 0)
    parts << QStringLiteral("LOGO");
  parts << (keyCode == HotkeyKeys::escape ? QStringLiteral("Escape") : QStringLiteral("r"));
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

std::optional<Shortcut> wantedShortcut(std::uint32_t keyCode, std::uint32_t modifiers) {
  using namespace HotkeyModifiers;
  if ((modifiers & ~HotkeyModifiers::all) != 0 ||
      (keyCode != HotkeyKeys::escape && keyCode != HotkeyKeys::ansiR))
    return std::nullopt;
  const QString trigger = triggerText(keyCode, modifiers);
  return Shortcut{
      shortcuts::shortcutAction(modifiers) + u'-' + trigger.toLower().replace(u'+', u'-'),
      {{QStringLiteral("description"), shortcuts::shortcutTitle(modifiers)},
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
