#include "platform/desktop/SettingsUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdio>

namespace tavin::desktop {
namespace {

// A pipe or device in the file's place could keep us waiting.
bool isInTheWay(const QString& path) {
  const QFileInfo info(path);
  return info.exists() && !info.isFile();
}

}  // namespace

SettingsUserDefaults::SettingsUserDefaults()
    : path_(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/tavin/tavin.conf")) {}

std::optional<QString> SettingsUserDefaults::string(const QString& key) {
  if (const auto found = unsaved_.find(key); found != unsaved_.end())
    return found->second;
  if (isInTheWay(path_))
    return std::nullopt;
  const QVariant value = QSettings(path_, QSettings::NativeFormat).value(key);
  if (value.metaType().id() != QMetaType::QString)
    return std::nullopt;
  return value.toString();
}

void SettingsUserDefaults::setString(const QString& key, const QString& value) {
  unsaved_[key] = value;
  if (save())
    unsaved_.clear();
}

// QSettings waits, up to half a minute, for whoever holds the lock beside the file that it writes.
// So it writes a copy in a folder of ours, which then takes the file's place in one step.
bool SettingsUserDefaults::save() const {
  if (isInTheWay(path_))
    return false;
  const QFileInfo link(path_);
  const QString target = link.exists() ? link.canonicalFilePath() : path_;
  const QString folder = QFileInfo(target).path();
  QDir().mkpath(folder);
  const QTemporaryDir workplace(folder + QStringLiteral("/.tavin-XXXXXX"));
  const QString copy = workplace.filePath(QStringLiteral("tavin.conf"));
  if (!workplace.isValid() || (link.exists() && !QFile::copy(target, copy)))
    return false;
  QSettings settings(copy, QSettings::NativeFormat);
  for (const auto& [key, value] : unsaved_) settings.setValue(key, value);
  settings.sync();
  return settings.status() == QSettings::NoError &&
         std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(target).constData()) ==
             0;
}

}  // namespace tavin::desktop
