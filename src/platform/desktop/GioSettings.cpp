#include "platform/desktop/GioSettings.h"

#include <gio/gio.h>

#include <utility>
#include <vector>

namespace tavin::desktop {
namespace {

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

template <typename Value>
bool isOf(const Value& value, const GVariantType* type) {
  return value && g_variant_is_of_type(value.get(), type) != FALSE;
}

}  // namespace

std::optional<GioSettings> GioSettings::open(const QString& schema, const QString& path,
                                             const QString& folder) {
  auto found = lookUp(schema, folder);
  const bool hasPlace = found && g_settings_schema_get_path(found.get()) != nullptr;
  if (!found || hasPlace != path.isEmpty())
    return std::nullopt;
  const QByteArray place = path.toUtf8();
  std::shared_ptr<GSettings> settings(
      g_settings_new_full(found.get(), nullptr, hasPlace ? nullptr : place.constData()),
      g_object_unref);
  return GioSettings(std::move(found), std::move(settings));
}

QStringList GioSettings::keys() const {
  const std::unique_ptr<gchar*, decltype(&g_strfreev)> names(
      g_settings_schema_list_keys(schema_.get()), g_strfreev);
  QStringList keys;
  for (gchar** name = names.get(); *name; ++name) keys << QString::fromUtf8(*name);
  return keys;
}

// GLib ends the program that asks for a key that is not there.
GioSettings::Value GioSettings::value(const QString& key) const {
  const QByteArray name = key.toUtf8();
  const bool has = g_settings_schema_has_key(schema_.get(), name.constData()) != FALSE;
  return {has ? g_settings_get_value(settings_.get(), name.constData()) : nullptr, g_variant_unref};
}

QStringList GioSettings::strings(const QString& key) const {
  const Value found = value(key);
  if (isOf(found, G_VARIANT_TYPE_STRING))
    return {QString::fromUtf8(g_variant_get_string(found.get(), nullptr))};
  if (!isOf(found, G_VARIANT_TYPE_STRING_ARRAY))
    return {};
  gsize count = 0;
  const std::unique_ptr<const gchar*, decltype(&g_free)> texts(
      g_variant_get_strv(found.get(), &count), g_free);
  QStringList list;
  for (gsize i = 0; i < count; ++i) list << QString::fromUtf8(texts.get()[i]);
  return list;
}

void GioSettings::setString(const QString& key, const QString& value) {
  if (strings(key) == QStringList(value))
    return;
  g_settings_set_string(settings_.get(), key.toUtf8().constData(), value.toUtf8().constData());
}

void GioSettings::setStrings(const QString& key, const QStringList& value) {
  std::vector<QByteArray> texts;
  for (const QString& text : value) texts.push_back(text.toUtf8());
  std::vector<const gchar*> pointers;
  for (const QByteArray& text : texts) pointers.push_back(text.constData());
  pointers.push_back(nullptr);
  g_settings_set_strv(settings_.get(), key.toUtf8().constData(), pointers.data());
}

bool GioSettings::flag(const QString& key) const {
  const Value found = value(key);
  return isOf(found, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(found.get()) != FALSE;
}

std::optional<double> GioSettings::number(const QString& key) const {
  const Value found = value(key);
  if (!isOf(found, G_VARIANT_TYPE_DOUBLE))
    return std::nullopt;
  return g_variant_get_double(found.get());
}

void GioSettings::reset(const QString& key) {
  g_settings_reset(settings_.get(), key.toUtf8().constData());
}

void GioSettings::sync() { g_settings_sync(); }

}  // namespace tavin::desktop
