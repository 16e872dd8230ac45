// The two alerts of the controller.
#include "app/AppDelegate.h"
#include "platform/Platform.h"

namespace tavin {
namespace {

// Canonically equivalent texts look the same to the reader and count as equal.
bool sameText(const QString& a, const QString& b) {
  return a == b ||
         a.normalized(QString::NormalizationForm_D) == b.normalized(QString::NormalizationForm_D);
}

}  // namespace

void AppDelegate::showError(const QString& message) {
  if (lastError_ && sameText(*lastError_, message))
    return;
  lastError_ = message;
  Alert alert;
  alert.messageText = QStringLiteral("Tavin couldn't read that");
  alert.informativeText = message;
  platform_.alerts->activateIgnoringOtherApps();
  platform_.alerts->runModal(alert, [](const AlertResponse&) {});
}

void AppDelegate::showAccessibilityHelp() {
  // Where the desktop has no such settings there is nothing for the button to open.
  const bool canOpen = platform_.workspace->hasAccessibilitySettings();
  Alert alert;
  alert.messageText = QStringLiteral("Tavin needs Accessibility access");
  alert.informativeText = QStringLiteral(
      "To read selected text in other apps, turn on Tavin in System Settings > Privacy & Security "
      "> Accessibility. If Tavin is already listed, remove it with the minus button and add it "
      "again (this happens after a rebuild).");
  if (canOpen)
    alert.buttons.append(QStringLiteral("Open Settings"));
  alert.buttons.append(QStringLiteral("Cancel"));
  platform_.alerts->activateIgnoringOtherApps();
  platform_.alerts->runModal(alert, [this, canOpen](const AlertResponse& response) {
    if (canOpen && response.button == AlertResponse::firstButton)
      platform_.workspace->openAccessibilitySettings();
  });
}

}  // namespace tavin
