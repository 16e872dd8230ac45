#pragma once

#include "platform/LoginItem.h"

namespace tavin::desktop {

// A desktop file in $XDG_CONFIG_HOME/autostart. It counts as enabled unless the user switched it
// off in the desktop's own settings, which mark the file instead of removing it.
class AutostartLoginItem final : public LoginItem {
 public:
  // `executable` is the program's absolute path.
  explicit AutostartLoginItem(QString executable);

  LoginItemStatus status() override;
  std::optional<QString> registerItem() override;
  std::optional<QString> unregisterItem() override;

 private:
  QString executable_;
  QString path_;
};

}  // namespace tavin::desktop
