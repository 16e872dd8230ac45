#pragma once

#include <QString>
#include <map>

#include "platform/UserDefaults.h"

namespace tavin::desktop {

// $XDG_CONFIG_HOME/tavin/tavin.conf. A file that cannot be read holds nothing; one that cannot be
// written loses the change when the program ends. Never waits for another program.
class SettingsUserDefaults final : public UserDefaults {
 public:
  SettingsUserDefaults();
  std::optional<QString> string(const QString& key) override;
  void setString(const QString& key, const QString& value) override;

 private:
  bool save() const;

  QString path_;
  std::map<QString, QString> unsaved_;
};

}  // namespace tavin::desktop
