#include "platform/desktop/SettingsUserDefaults.h"

namespace tavin::desktop {

SettingsUserDefaults::SettingsUserDefaults()
    : settings_(QStringLiteral("tavin"), QStringLiteral("tavin")) {
  settings_.setFallbacksEnabled(
      false);  // The system-wide file and the organisation's are not ours.
}

std::optional<QString> SettingsUserDefaults::string(const QString& key) {
  settings_.sync();
  const QVariant value = settings_.value(key);
  if (value.metaType().id() != QMetaType::QString)
    return std::nullopt;
  return value.toString();
}

void SettingsUserDefaults::setString(const QString& key, const QString& value) {
  settings_.setValue(key, value);
  settings_.sync();
}

}  // namespace tavin::desktop
