// The two alerts of the controller.
#include <QCoreApplication>

#include "app/AppDelegate.h"
#include "platform/Platform.h"

namespace tavin {
namespace {

// Canonically equivalent texts look the same to the reader and count as equal.
bool sameText(const QString& a, const QString& b) {
  return a == b ||
         a.normalized(QString::NormalizationForm_D) == b.normalized(QString::NormalizationForm_D);
}

// The catalogues say it otherwise on the desktops that are named beside it.
constexpr const char* help[][2] = {
    QT_TRANSLATE_NOOP3(
        "Alert",
        "To read selected text in other apps, turn on Tavin in System Settings > Privacy & "
        "Security > Accessibility. If Tavin is already listed, remove it with the minus button and "
        "add it again (this happens after a rebuild).",
        ""),
    QT_TRANSLATE_NOOP3(
        "Alert",
        "To read selected text in other apps, turn on Tavin in System Settings > Privacy & "
        "Security > Accessibility. If Tavin is already listed, remove it with the minus button and "
        "add it again (this happens after a rebuild).",
        "GNOME"),
    QT_TRANSLATE_NOOP3(
        "Alert",
        "To read selected text in other apps, turn on Tavin in System Settings > Privacy & "
        "Security > Accessibility. If Tavin is already listed, remove it with the minus button and "
        "add it again (this happens after a rebuild).",
        "Plasma"),
};

}  // namespace

void AppDelegate::showError(const Words& message, std::function<void()> answered) {
  if (lastError_ && sameText(*lastError_, message.source))
    return answered();
  lastError_ = message.source;
  Alert alert;
  alert.messageText = QCoreApplication::translate("Alert", "Tavin couldn't read that");
  alert.informativeText = message.shown;
  platform_.alerts->activateIgnoringOtherApps();
  platform_.alerts->runModal(
      alert, [answered = std::move(answered)](const AlertResponse&) { answered(); });
}

void AppDelegate::showAccessibilityHelp() {
  // Where the desktop has no such settings there is nothing for the button to open.
  const bool canOpen = platform_.workspace->hasAccessibilitySettings();
  Alert alert;
  alert.messageText = QCoreApplication::translate("Alert", "Tavin needs Accessibility access");
  alert.informativeText = words("Alert", help[0][0], {}, platform_.workspace->desktop()).shown;
  if (canOpen)
    alert.buttons.append(QCoreApplication::translate("Alert", "Open Settings"));
  alert.buttons.append(QCoreApplication::translate("Alert", "Cancel"));
  platform_.alerts->activateIgnoringOtherApps();
  platform_.alerts->runModal(alert, [this, canOpen](const AlertResponse& response) {
    if (canOpen && response.button == AlertResponse::firstButton)
      platform_.workspace->openAccessibilitySettings();
  });
}

}  // namespace tavin
