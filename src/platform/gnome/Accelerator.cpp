#include "platform/gnome/Accelerator.h"

#include <array>
#include <utility>

#include "platform/HotkeyService.h"

namespace tavin::gnome {
namespace {

using namespace HotkeyModifiers;

// The kernel's code of the key in the ANSI "R" position, counted as X counts.
constexpr auto keyInPositionOfR = "0x1b";

struct ModifierName {
  const char* name;
  std::uint32_t modifier;
};
// The first name of each modifier is the one to write.
constexpr std::array<ModifierName, 10> modifierNames{{{"Super", cmdKey},
                                                      {"Shift", shiftKey},
                                                      {"Control", controlKey},
                                                      {"Alt", optionKey},
                                                      {"Mod4", cmdKey},
                                                      {"Shft", shiftKey},
                                                      {"Primary", controlKey},
                                                      {"Ctrl", controlKey},
                                                      {"Ctl", controlKey},
                                                      {"Mod1", optionKey}}};
constexpr std::size_t namesToWrite = 4;

std::optional<std::uint32_t> modifierNamed(QStringView name) {
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

std::optional<Combination> Combination::of(std::uint32_t keyCode, std::uint32_t modifiers) {
  if ((modifiers & ~HotkeyModifiers::all) != 0)
    return std::nullopt;
  if (keyCode == HotkeyKeys::escape) {
    const Accelerator escape{modifiers, QStringLiteral("escape")};
    return Combination{escape, escape};
  }
  if (keyCode == HotkeyKeys::ansiR)
    return Combination{{modifiers, QLatin1String(keyInPositionOfR)},
                       {modifiers, QStringLiteral("r")}};
  return std::nullopt;
}

}  // namespace tavin::gnome
