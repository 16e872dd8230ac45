#include "platform/gnome/Accelerator.h"

#include <array>
#include <utility>

namespace tavin::gnome {

using shortcuts::KeyCombination;

namespace {

// The kernel's code of the key in the ANSI "R" position, counted as X counts.
constexpr auto keyInPositionOfR = "0x1b";

struct ModifierName {
  const char* name;
  KeyCombination::Modifier modifier;
};
// The first name of each modifier is the one to write.
constexpr std::array<ModifierName, 10> modifierNames{{{"Super", KeyCombination::super},
                                                      {"Shift", KeyCombination::shift},
                                                      {"Control", KeyCombination::control},
                                                      {"Alt", KeyCombination::alt},
                                                      {"Mod4", KeyCombination::super},
                                                      {"Shft", KeyCombination::shift},
                                                      {"Primary", KeyCombination::control},
                                                      {"Ctrl", KeyCombination::control},
                                                      {"Ctl", KeyCombination::control},
                                                      {"Mod1", KeyCombination::alt}}};
constexpr std::size_t namesToWrite = 4;

std::optional<KeyCombination::Modifier> modifierNamed(QStringView name) {
  for (const ModifierName& each : modifierNames) {
    if (name.compare(QLatin1String(each.name), Qt::CaseInsensitive) == 0)
      return each.modifier;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Accelerator> Accelerator::parse(const QString& text) {
  Accelerator result;
  QStringView rest = text;
  while (rest.startsWith(u'<')) {
    const auto end = rest.indexOf(u'>');
    const auto modifier = end < 0 ? std::nullopt : modifierNamed(rest.mid(1, end - 1));
    if (!modifier)
      return std::nullopt;
    result.modifiers |= *modifier;
    rest = rest.mid(end + 1);
  }
  result.key = rest.toString().toLower();
  if (result.key.isEmpty() || result.key == QLatin1String("disabled"))
    return std::nullopt;
  return result;
}

QString Accelerator::text() const {
  QString text;
  for (std::size_t i = 0; i < namesToWrite; ++i) {
    if ((modifiers & modifierNames[i].modifier) != 0)
      text += QStringLiteral("<%1>").arg(QLatin1String(modifierNames[i].name));
  }
  return text + (key == QLatin1String("escape") ? QStringLiteral("Escape") : key);
}

BothAccelerators BothAccelerators::of(const KeyCombination& combination) {
  if (combination.key == KeyCombination::Key::escape) {
    const Accelerator escape{combination.modifiers, QStringLiteral("escape")};
    return {escape, escape};
  }
  return {{combination.modifiers, QLatin1String(keyInPositionOfR)},
          {combination.modifiers, QStringLiteral("r")}};
}

}  // namespace tavin::gnome
