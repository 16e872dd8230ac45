#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

// As GLib has them. NOLINTBEGIN(bugprone-reserved-identifier,modernize-use-using)
typedef struct _GSettings GSettings;
typedef struct _GSettingsSchema GSettingsSchema;
// NOLINTEND(bugprone-reserved-identifier,modernize-use-using)

namespace tavin::gnome {

// The settings of one schema. Reading never waits; writing is carried out soon after. Main thread,
// except where said.
class Settings {
 public:
  // None where the schema is not installed. A schema without a place of its own needs `path`;
  // `folder` is one with compiled schemas besides those of the system, for extensions.
  static std::optional<Settings> open(const QString& schema, const QString& path = {},
                                      const QString& folder = {});

  QStringList keys() const;
  // A text or a list of texts; empty for settings of other types and for keys that are not there.
  QStringList strings(const QString& key) const;
  // Writes nothing where that is the value already: each write is news to whoever listens.
  void setString(const QString& key, const QString& value);
  void setStrings(const QString& key, const QStringList& value);
  bool flag(const QString& key) const;
  void reset(const QString& key);

  // Waits until what was written is stored; any thread. Not bounded.
  static void sync();

 private:
  Settings(std::shared_ptr<GSettingsSchema> schema, std::shared_ptr<GSettings> settings)
      : schema_(std::move(schema)), settings_(std::move(settings)) {}
  bool has(const QString& key) const;

  std::shared_ptr<GSettingsSchema> schema_;
  std::shared_ptr<GSettings> settings_;
};

}  // namespace tavin::gnome
