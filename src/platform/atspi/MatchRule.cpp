#include "platform/atspi/MatchRule.h"

#include <QDBusMetaType>
#include <QMap>
#include <QStringList>

namespace tavin::atspi {

// How the protocol says which objects are wanted: four lists, each with how it is to be matched.
struct MatchRule {
  enum Match { all = 1 };
  QList<int> states = {0, 0};
  QMap<QString, QString> attributes;
  QList<int> roles = {0, 0, 0, 0};
  QStringList interfaces;
};

static QDBusArgument& operator<<(QDBusArgument& argument, const MatchRule& rule) {
  argument.beginStructure();
  argument << rule.states << int{MatchRule::all} << rule.attributes << int{MatchRule::all}
           << rule.roles << int{MatchRule::all} << rule.interfaces << int{MatchRule::all} << false;
  argument.endStructure();
  return argument;
}

// Only sent, never received; but Qt registers both ways or none.
static const QDBusArgument& operator>>(const QDBusArgument& argument, MatchRule&) {
  return argument;
}

}  // namespace tavin::atspi

Q_DECLARE_METATYPE(tavin::atspi::MatchRule)

namespace tavin::atspi {
namespace {

QVariantList matches(const MatchRule& rule, int most) {
  static const bool registered = [] {
    qDBusRegisterMetaType<QMap<QString, QString>>();
    return qDBusRegisterMetaType<MatchRule>().isValid();
  }();
  Q_UNUSED(registered);
  constexpr quint32 canonicalOrder = 1;
  return {QVariant::fromValue(rule), canonicalOrder, most, true};
}

}  // namespace

QVariantList matchesWithState(States::Bit state) {
  MatchRule rule;
  rule.states[state / 32] = 1 << (state % 32);
  return matches(rule, 0);
}

QVariantList matchesWithInterface(const QString& interface, int most) {
  MatchRule rule;
  rule.interfaces = QStringList{interface};
  return matches(rule, most);
}

}  // namespace tavin::atspi
