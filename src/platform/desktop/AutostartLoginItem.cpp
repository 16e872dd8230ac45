#include "platform/desktop/AutostartLoginItem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "platform/desktop/DesktopEntry.h"
#include "platform/desktop/DesktopName.h"
#include "platform/posix/ForeignFile.h"

namespace tavin::desktop {
namespace {

using Entries = QHash<QByteArray, QByteArray>;

bool namesThisDesktop(const QByteArray& list) {
  const QStringList names = currentDesktops();
  return std::ranges::any_of(list.split(';'), [&names](const QByteArray& name) {
    return names.contains(QString::fromUtf8(name.trimmed()), Qt::CaseInsensitive);
  });
}

// X-GNOME-Autostart-enabled, X-MATE-Autostart-enabled and their like.
bool hasSwitchThatIsOff(const Entries& entries) {
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    const QByteArray key = entry.key().toLower();
    if (key.startsWith("x-") && key.endsWith("-autostart-enabled") &&
        entry.value().toLower() == "false")
      return true;
  }
  return false;
}

bool isSwitchedOff(const Entries& entries) {
  return entries.value("Hidden").toLower() == "true" || hasSwitchThatIsOff(entries) ||
         (entries.contains("OnlyShowIn") && !namesThisDesktop(entries.value("OnlyShowIn"))) ||
         namesThisDesktop(entries.value("NotShowIn"));
}

QByteArray contents(const QString& executable) {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Tavin\n"
         "Comment=Reads the selected text aloud\n"
         "Icon=app.tavin.Tavin\n"
         "Exec=" +
         desktopEntryExecArgument(executable) +
         "\n"
         // Nothing happens, and no error shows, once the program is uninstalled.
         "TryExec=" +
         desktopEntryString(executable) +
         "\n"
         "Terminal=false\n"
         "StartupNotify=false\n"
         "X-GNOME-Autostart-enabled=true\n";
}

}  // namespace

AutostartLoginItem::AutostartLoginItem(QString executable)
    : executable_(std::move(executable)),
      path_(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/autostart/app.tavin.Tavin.desktop")) {}

LoginItemStatus AutostartLoginItem::status() {
  if (!QFileInfo::exists(path_))
    return LoginItemStatus::notRegistered;
  const auto text = posix::readForeignFile(QFile::encodeName(path_).toStdString());
  if (!text || isSwitchedOff(parseDesktopEntry(QByteArray::fromStdString(*text))))
    return LoginItemStatus::requiresApproval;
  return LoginItemStatus::enabled;
}

std::optional<QString> AutostartLoginItem::registerItem() {
  const QString folder = QFileInfo(path_).path();
  if (!QDir().mkpath(folder))
    return QCoreApplication::translate("Login", "The folder %1 could not be made.").arg(folder);
  QSaveFile file(path_);
  const QByteArray text = contents(executable_);
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
    return QCoreApplication::translate("Login", "%1 could not be written: %2")
        .arg(path_, file.errorString());
  return std::nullopt;
}

std::optional<QString> AutostartLoginItem::unregisterItem() {
  QFile file(path_);
  if (!file.exists() || file.remove())
    return std::nullopt;
  return QCoreApplication::translate("Login", "%1 could not be removed: %2")
      .arg(path_, file.errorString());
}

}  // namespace tavin::desktop
