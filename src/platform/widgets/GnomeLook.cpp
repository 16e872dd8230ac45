#include "platform/widgets/GnomeLook.h"

// GLib has its own use for Qt's word.
#undef signals
#include <gio/gio.h>

#include <QApplication>
#include <QPalette>
#include <memory>

#include "platform/desktop/DesktopName.h"

namespace tavin::widgets {

namespace {

using Value = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

// None where the schema or the key is not installed: GLib would end the program.
Value setting(const char* schemaName, const char* key) {
  Value none(nullptr, g_variant_unref);
  GSettingsSchemaSource* source = g_settings_schema_source_get_default();
  if (source == nullptr)
    return none;
  const std::unique_ptr<GSettingsSchema, decltype(&g_settings_schema_unref)> schema(
      g_settings_schema_source_lookup(source, schemaName, TRUE), g_settings_schema_unref);
  if (!schema || g_settings_schema_has_key(schema.get(), key) == FALSE)
    return none;
  const std::unique_ptr<GSettings, decltype(&g_object_unref)> settings(g_settings_new(schemaName),
                                                                       g_object_unref);
  return {g_settings_get_value(settings.get(), key), g_variant_unref};
}

bool wantsDark() {
  const Value scheme = setting("org.gnome.desktop.interface", "color-scheme");
  return scheme &&
         QLatin1String(g_variant_get_string(scheme.get(), nullptr)) == QLatin1String("prefer-dark");
}

bool wantsHighContrast() {
  const Value contrast = setting("org.gnome.desktop.a11y.interface", "high-contrast");
  return contrast && g_variant_get_boolean(contrast.get()) != FALSE;
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

void setColours(const QColor& window, const QColor& button, const QColor& highlight) {
  QPalette palette(button, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  QApplication::setPalette(palette);
}

// On X11 it is in the display's dots per inch already.
void growLetters() {
  const Value factor = setting("org.gnome.desktop.interface", "text-scaling-factor");
  if (!factor || !QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
    return;
  QFont font = QApplication::font();
  font.setPointSizeF(font.pointSizeF() * g_variant_get_double(factor.get()));
  QApplication::setFont(font);
}

}  // namespace

void followGnomeLook() {
  if (!desktop::currentDesktops().contains(QLatin1String("GNOME"), Qt::CaseInsensitive))
    return;
  const bool dark = wantsDark();
  if (wantsHighContrast())
    setColours(dark ? Qt::black : Qt::white, dark ? Qt::black : Qt::white,
               QColor(0x1a, 0x5f, 0xb4));
  else if (dark && !isDark(QApplication::palette()))
    setColours(QColor(0x30, 0x30, 0x30), QColor(0x44, 0x44, 0x44), QColor(0x35, 0x84, 0xe4));
  growLetters();
}

}  // namespace tavin::widgets
