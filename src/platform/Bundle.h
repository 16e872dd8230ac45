#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>

namespace tavin {

// Where the program's own files are, and what its information dictionary says.
struct Bundle {
  std::optional<QString> resourcesDirectory;  // <prefix>/share/tavin of the running executable.
  QString windowProgram;  // Shows our windows: <prefix>/lib/tavin/tavin-windows.
  QJsonObject info;       // <resources>/info.json; empty when unreadable.

  // Found from the running executable, symbolic links resolved.
  static Bundle main();
};

}  // namespace tavin
