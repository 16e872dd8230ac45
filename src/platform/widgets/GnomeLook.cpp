#include "platform/widgets/GnomeLook.h"

#include <QApplication>
#include <QFontInfo>
#include <QPalette>

#include "platform/desktop/DesktopName.h"
#include "platform/desktop/GioSettings.h"
#include "platform/widgets/DisplayServer.h"

namespace tavin::widgets {
namespace {

using desktop::GioSettings;

bool wantsDark(const std::optional<GioSettings>& settings) {
  return settings && settings->strings("color-scheme") == QStringList("prefer-dark");
}

bool wantsHighContrast() {
  const auto settings = GioSettings::open("org.gnome.desktop.a11y.interface");
  return settings && settings->flag("high-contrast");
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

void setColours(const QColor& window, const QColor& button, const QColor& highlight) {
  QPalette palette(button, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  QApplication::setPalette(palette);
  palette.setColor(QPalette::Base, window);  // Black otherwise, as a menu's lines are.
  QApplication::setPalette(palette, "QMenu");
}

// On X11 it is in the display's dots per inch already.
void growLetters(const std::optional<GioSettings>& settings) {
  const auto factor = settings ? settings->number("text-scaling-factor") : std::nullopt;
  if (!factor || !isOnWayland())
    return;
  QFont font = QApplication::font();
  font.setPointSizeF(QFontInfo(font).pointSizeF() * *factor);
  QApplication::setFont(font);
}

}  // namespace

void followGnomeLook() {
  if (!desktop::isGnome())
    return;
  const auto settings = GioSettings::open("org.gnome.desktop.interface");
  const bool dark = wantsDark(settings);
  if (wantsHighContrast())
    setColours(dark ? Qt::black : Qt::white, dark ? Qt::black : Qt::white,
               QColor(0x1a, 0x5f, 0xb4));
  else if (dark && !isDark(QApplication::palette()))
    setColours(QColor(0x30, 0x30, 0x30), QColor(0x44, 0x44, 0x44), QColor(0x35, 0x84, 0xe4));
  growLetters(settings);
}

}  // namespace tavin::widgets
