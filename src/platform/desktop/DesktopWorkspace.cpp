#include "platform/desktop/DesktopWorkspace.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/desktop/AccessibilitySettings.h"
#include "platform/desktop/BellSound.h"
#include "platform/desktop/DesktopName.h"

namespace tavin::desktop {

struct DesktopWorkspace::Bell {
  std::function<void()> display;
  std::atomic<bool> sounding = false;
};

DesktopWorkspace::DesktopWorkspace(std::function<void()> displayBell)
    : bell_(new Bell{.display = std::move(displayBell)}) {}

QByteArray DesktopWorkspace::desktop() {
  constexpr const char* names[][2] = {{"GNOME", "GNOME"}, {"KDE", "Plasma"}, {"XFCE", "Xfce"}};
  for (const QString& desktop : currentDesktops())
    for (const auto& [current, name] : names)
      if (desktop.compare(QLatin1String(current), Qt::CaseInsensitive) == 0)
        return name;
  return {};
}

void DesktopWorkspace::openFile(const QString& path) {
  if (QFileInfo(path).isFile())
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool DesktopWorkspace::hasAccessibilitySettings() {
  return accessibilitySettingsCommand().has_value();
}

void DesktopWorkspace::openAccessibilitySettings() {
  if (auto command = accessibilitySettingsCommand()) {
    const QString program = command->takeFirst();
    QProcess::startDetached(program, *command, QDir::homePath());
  }
}

void DesktopWorkspace::beep() {
  if (bell_->sounding.exchange(true))
    return;
  // A sound server can take its time to answer, or forever.
  try {
    std::thread([bell = bell_] {
      if (!playBellSound())
        bell->display();
      bell->sounding = false;
    }).detach();
  } catch (const std::system_error&) {  // No thread is to be had: this beep is not heard.
    bell_->sounding = false;
  }
}

}  // namespace tavin::desktop
