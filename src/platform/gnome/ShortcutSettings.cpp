#include "platform/gnome/ShortcutSettings.h"

#include "platform/desktop/GioSettings.h"
#include "platform/shortcuts/ShortcutAction.h"

namespace tavin::gnome {

using desktop::GioSettings;

namespace {

const QString listKey = QStringLiteral("custom-keybindings");
const QString nameKey = QStringLiteral("name");
const QString commandKey = QStringLiteral("command");
const QString bindingKey = QStringLiteral("binding");

void setPaths(const QStringList& paths) {
  if (auto settings = GioSettings::open(mediaKeysSchema())) {
    // The list as it was before us may have been the default one.
    if (paths.isEmpty())
      settings->reset(listKey);
    else
      settings->setStrings(listKey, paths);
  }
}

}  // namespace

QString mediaKeysSchema() { return QStringLiteral("org.gnome.settings-daemon.plugins.media-keys"); }

QString customSchema() { return mediaKeysSchema() + QStringLiteral(".custom-keybinding"); }

QStringList customPaths() {
  const auto settings = GioSettings::open(mediaKeysSchema());
  return settings ? settings->strings(listKey) : QStringList();
}

const QStringList& keyActions() {
  static const QStringList names{shortcuts::speakAction, shortcuts::pauseAction};
  return names;
}

QString customPathOf(const QString& action) {
  return QStringLiteral(
             "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/tavin-%1/")
      .arg(action);
}

QStringList ourCustomPaths() {
  QStringList paths;
  for (const QString& action : keyActions()) paths << customPathOf(action);
  return paths;
}

QString runActionOf(const QString& action) { return action + QStringLiteral("-key"); }

void addCustomBinding(const QString& action, const QString& title, const Accelerator& key) {
  const QString path = customPathOf(action);
  auto binding = GioSettings::open(customSchema(), path);
  if (!binding)
    return;
  binding->setString(nameKey, title);
  binding->setString(commandKey,
                     QStringLiteral("gapplication action app.tavin.Tavin ") + runActionOf(action));
  binding->setString(bindingKey, key.text());
  QStringList paths = customPaths();
  if (!paths.contains(path))
    setPaths(paths << path);
}

void removeCustomBinding(const QString& action) {
  const QString path = customPathOf(action);
  QStringList paths = customPaths();
  if (paths.removeAll(path) == 0)
    return;
  setPaths(paths);
  if (auto binding = GioSettings::open(customSchema(), path)) {
    for (const QString& key : {nameKey, commandKey, bindingKey}) binding->reset(key);
  }
}

void removeCustomBindings() {
  for (const QString& action : keyActions()) removeCustomBinding(action);
}

}  // namespace tavin::gnome
