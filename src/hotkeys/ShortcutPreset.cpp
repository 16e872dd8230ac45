#include "hotkeys/ShortcutPreset.h"

#include <algorithm>

#include "platform/HotkeyService.h"
#include "platform/UserDefaults.h"

namespace tavin {

const QString ShortcutPreset::defaultsKey = QStringLiteral("shortcut");

const std::vector<ShortcutPreset>& ShortcutPreset::all() {
  using namespace HotkeyModifiers;
  static const std::vector<ShortcutPreset> presets{
      {QStringLiteral("opt-esc"), QStringLiteral("⌥ Esc"), HotkeyKeys::escape, optionKey},
      {QStringLiteral("ctrl-esc"), QStringLiteral("⌃ Esc"), HotkeyKeys::escape, controlKey},
      {QStringLiteral("ctrl-opt-r"), QStringLiteral("⌃⌥ R"), HotkeyKeys::ansiR,
       controlKey | optionKey},
  };
  return presets;
}

const ShortcutPreset& ShortcutPreset::current(UserDefaults& defaults) {
  const auto stored = defaults.string(defaultsKey);
  const auto chosen = std::find_if(all().begin(), all().end(), [&](const ShortcutPreset& preset) {
    return preset.id == stored;
  });
  return chosen == all().end() ? all().front() : *chosen;
}

QString ShortcutPreset::pauseLabel() const { return QStringLiteral("⇧") + label; }

}  // namespace tavin
