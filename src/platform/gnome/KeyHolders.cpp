#include "platform/gnome/KeyHolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include "platform/desktop/GioSettings.h"
#include "platform/gnome/ShortcutSettings.h"
#include "platform/posix/ForeignFile.h"

namespace tavin::gnome {

using desktop::GioSettings;

namespace {

const QStringList& desktopSchemas() {
  static const QStringList schemas{
      QStringLiteral("org.gnome.desktop.wm.keybindings"),
      QStringLiteral("org.gnome.shell.keybindings"), QStringLiteral("org.gnome.mutter.keybindings"),
      QStringLiteral("org.gnome.mutter.wayland.keybindings"), mediaKeysSchema()};
  return schemas;
}

bool holds(const GioSettings& settings, const QString& key, const BothAccelerators& combination) {
  for (const QString& text : settings.strings(key)) {
    const auto accelerator = Accelerator::parse(text);
    if (accelerator && combination.isThe(*accelerator))
      return true;
  }
  return false;
}

std::optional<QString> holderIn(const std::optional<GioSettings>& settings, const QString& schema,
                                const BothAccelerators& combination) {
  if (!settings)
    return std::nullopt;
  for (const QString& key : settings->keys()) {
    if (holds(*settings, key, combination))
      return schema + u' ' + key;
  }
  return std::nullopt;
}

std::optional<QString> otherCustomBinding(const BothAccelerators& combination,
                                          const QStringList& ours) {
  for (const QString& path : customPaths()) {
    const auto binding = GioSettings::open(customSchema(), path);
    if (!ours.contains(path) && binding && holds(*binding, QStringLiteral("binding"), combination))
      return QStringLiteral("the custom shortcut ") +
             binding->strings(QStringLiteral("name")).join(QString());
  }
  return std::nullopt;
}

QStringList enabledExtensions() {
  const auto shell = GioSettings::open(QStringLiteral("org.gnome.shell"));
  if (!shell || shell->flag(QStringLiteral("disable-user-extensions")))
    return {};
  QStringList enabled = shell->strings(QStringLiteral("enabled-extensions"));
  for (const QString& disabled : shell->strings(QStringLiteral("disabled-extensions")))
    enabled.removeAll(disabled);
  return enabled;
}

// An extension may bring its schema along in its own folder, or install it with the system's.
std::optional<QString> holderInExtension(const QString& folder,
                                         const BothAccelerators& combination) {
  const auto text = posix::readForeignFile(
      QFile::encodeName(folder + QStringLiteral("/metadata.json")).toStdString());
  if (!text)
    return std::nullopt;
  const QString schema = QJsonDocument::fromJson(QByteArray::fromStdString(*text))
                             .object()
                             .value(QStringLiteral("settings-schema"))
                             .toString();
  const QString schemas = folder + QStringLiteral("/schemas");
  const bool brought = QFileInfo::exists(schemas + QStringLiteral("/gschemas.compiled"));
  return holderIn(GioSettings::open(schema, {}, brought ? schemas : QString()), schema,
                  combination);
}

std::optional<QString> extension(const BothAccelerators& combination) {
  for (const QString& uuid : enabledExtensions()) {
    const QString folder = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                  QStringLiteral("gnome-shell/extensions/") + uuid,
                                                  QStandardPaths::LocateDirectory);
    if (folder.isEmpty())
      continue;
    if (auto holder = holderInExtension(folder, combination))
      return holder;
  }
  return std::nullopt;
}

}  // namespace

std::optional<QString> holderOf(const BothAccelerators& combination, const QStringList& ours) {
  for (const QString& schema : desktopSchemas()) {
    if (auto holder = holderIn(GioSettings::open(schema), schema, combination))
      return holder;
  }
  if (auto holder = otherCustomBinding(combination, ours))
    return holder;
  return extension(combination);
}

}  // namespace tavin::gnome
