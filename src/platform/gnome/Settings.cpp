#include "platform/gnome/Settings.h"

#include <gio/gio.h>

#include <utility>
#include <vector>

namespace tavin::gnome {
namespace {

using Variant = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

std::shared_ptr<GSettingsSchema> lookUp(const QString& schema, const QString& folder) {
  GSettingsSchemaSource* source = g_settings_schema_source_get_default();
  std::shared_ptr<GSettingsSchemaSource> own;
  if (!folder.isEmpty()) {
    own.reset(g_settings_schema_source_new_from_directory(folder.toUtf8().constData(), source,
                                                          FALSE, nullptr),
              [](GSettingsSchemaSource* given) {
                if (given)
                  g_settings_schema_source_unref(given);
              });
    if (own)
      source = own.get();
  }
  GSettingsSchema* found =
      source ? g_settings_schema_source_lookup(source, schema.toUtf8().constData(), TRUE) : nullptr;
  return found ? std::shared_ptr<GSettingsSchema>(found, g_settings_schema_unref) : nullptr;
}

}  // namespace

std::optional<Settings> Settings::open(const QString& schema, const QString& path,
                                       const QString& folder) {
  auto found = lookUp(schema, folder);
  const bool hasPlace = found && g_settings_schema_get_path(found.get()) != nullptr;
  if (!found || hasPlace != path.isEmpty())
    return std::nullopt;
  const QByteArray place = path.toUtf8();
  std::shared_ptr<GSettings> settings(
      g_settings_new_full(found.get(), nullptr, hasPlace ? nullptr : place.constData()),
      g_object_unref);
  return Settings(std::move(found), std::move(settings));
}

QStringList Settings::keys() const {
  const std::unique_ptr<gchar*, decltype(&g_strfreev)> names(
      g_settings_schema_list_keys(schema_.get()), g_strfreev);
  QStringList keys;
  for (gchar** name = names.get(); *name; ++name) keys << QString::fromUtf8(*name);
  return keys;
}

bool Settings::has(const QString& key) const {
  return g_settings_schema_has_key(schema_.get(), key.toUtf8().constData());
}

QStringList Settings::strings(const QString& key) const {
  if (!has(key))
    return {};
  const Variant value(g_settings_get_value(settings_.get(), key.toUtf8().constData()),
                      g_variant_unref);
  if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
    return {QString::fromUtf8(g_variant_get_string(value.get(), nullptr))};
  if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY))
    return {};
  gsize count = 0;
  const std::unique_ptr<const gchar*, decltype(&g_free)> texts(
      g_variant_get_strv(value.get(), &count), g_free);
  QStringList list;
  for (gsize i = 0; i < count; ++i) list << QString::fromUtf8(texts.get()[i]);
  return list;
}

void Settings::setString(const QString& key, const QString& value) {
  if (strings(key) == QStringList(value))
    return;
  g_settings_set_string(settings_.get(), key.toUtf8().constData(), value.toUtf8().constData());
}

void Settings::setStrings(const QString& key, const QStringList& value) {
  std::vector<QByteArray> texts;
  for (const QString& text : value) texts.push_back(text.toUtf8());
  std::vector<const gchar*> pointers;
  for (const QByteArray& text : texts) pointers.push_back(text.constData());
  pointers.push_back(nullptr);
  g_settings_set_strv(settings_.get(), key.toUtf8().constData(), pointers.data());
}

bool Settings::flag(const QString& key) const {
  return has(key) && g_settings_get_boolean(settings_.get(), key.toUtf8().constData()) != FALSE;
}

void Settings::reset(const QString& key) {
  g_settings_reset(settings_.get(), key.toUtf8().constData());
}

void Settings::sync() { g_settings_sync(); }

}  // namespace tavin::gnome
