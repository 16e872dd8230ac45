#pragma once

#include <QString>
#include <vector>

namespace tavin {

class UserDefaults;

// One of the key combinations that the user can choose from. Each yields two shortcuts: its own,
// which speaks, and the same with Shift added, which pauses.
struct ShortcutPreset {
  QString id;     // Stored in the user defaults.
  QString label;  // Shown to the user, with modifier symbols.
  int keyCode;    // A macOS virtual key code.
  int modifiers;  // A Carbon modifier mask.

  bool operator==(const ShortcutPreset&) const = default;

  // The user-defaults key that holds the chosen preset's id.
  static const QString defaultsKey;

  static const std::vector<ShortcutPreset>& all();
  // Read at each call; the first row where nothing valid is stored. Main thread.
  static const ShortcutPreset& current(UserDefaults& defaults);

  QString pauseLabel() const;
};

}  // namespace tavin
