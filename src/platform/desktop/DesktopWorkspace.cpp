#include "platform/desktop/DesktopWorkspace.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QUrl>
#include <atomic>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/ActivationToken.h"
#include "platform/desktop/AccessibilitySettings.h"
#include "platform/desktop/BellSound.h"
#include "platform/desktop/DesktopName.h"

namespace tavin::desktop {
namespace {

using Clock = std::chrono::steady_clock;

// More than the sound itself may take.
constexpr std::chrono::seconds longestBeep{6};
// Beeps that hang keep their threads for as long as the sound server hangs.
constexpr int mostThreads = 4;

// Which lives on without us. With the token, where there is one, its window comes to the front.
bool start(const QString& program, const QStringList& arguments, const QString& token) {
  QProcess process;
  process.setProgram(program);
  process.setArguments(arguments);
  process.setWorkingDirectory(QDir::homePath());
  auto environment = QProcessEnvironment::systemEnvironment();
  if (!token.isEmpty())
    environment.insert(QLatin1String(activationTokenVariable), token);
  process.setProcessEnvironment(environment);
  return process.startDetached();
}

}  // namespace

// Shared with the threads of the beeps, which may outlive the workspace.
struct DesktopWorkspace::Bell {
  std::function<void()> display;
  Sound sound;
  std::atomic<int> threads = 0;
  std::atomic<Clock::time_point> since = Clock::time_point();  // Of the last one; null without any.

  // On a thread of its own, up to its end.
  void ring(Clock::time_point began) {
    const bool hopeless = ++threads > mostThreads;
    if (hopeless || !sound.play())
      display();
    --threads;
    since.compare_exchange_strong(began, Clock::time_point());
  }
};

DesktopWorkspace::DesktopWorkspace(std::function<void()> displayBell)
    : DesktopWorkspace(std::move(displayBell), {.play = playBellSound, .longest = longestBeep}) {}

DesktopWorkspace::DesktopWorkspace(std::function<void()> displayBell, Sound sound)
    : bell_(new Bell{.display = std::move(displayBell), .sound = std::move(sound)}) {}

QByteArray DesktopWorkspace::desktop() {
  constexpr const char* names[][2] = {{"GNOME", "GNOME"}, {"KDE", "Plasma"}, {"XFCE", "Xfce"}};
  for (const QString& desktop : currentDesktops())
    for (const auto& [current, name] : names)
      if (desktop.compare(QLatin1String(current), Qt::CaseInsensitive) == 0)
        return name;
  return {};
}

void DesktopWorkspace::openFile(const QString& path) {
  if (!QFileInfo(path).isFile())
    return;
  const QString url = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
  const QString token = takeActivationToken();
  if (!start(QStringLiteral("xdg-open"), {url}, token))
    start(QStringLiteral("gio"), {QStringLiteral("open"), url}, token);
}

bool DesktopWorkspace::hasAccessibilitySettings() {
  return accessibilitySettingsCommand().has_value();
}

void DesktopWorkspace::openAccessibilitySettings() {
  if (auto command = accessibilitySettingsCommand()) {
    const QString program = command->takeFirst();
    start(program, *command, takeActivationToken());
  }
}

void DesktopWorkspace::beep() {
  const auto now = Clock::now();
  auto last = bell_->since.load();
  const bool sounds = last != Clock::time_point() && now - last < bell_->sound.longest;
  if (sounds || !bell_->since.compare_exchange_strong(last, now))
    return;
  try {
    std::thread([bell = bell_, now] { bell->ring(now); }).detach();
  } catch (const std::system_error&) {  // No thread is to be had: this beep is not heard.
    bell_->since = Clock::time_point();
  }
}

}  // namespace tavin::desktop
