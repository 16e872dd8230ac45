#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

// As GLib has them, which needs QT_NO_KEYWORDS.
// NOLINTBEGIN(bugprone-reserved-identifier,modernize-use-using)
typedef struct _GSettings GSettings;
typedef struct _GSettingsSchema GSettingsSchema;
typedef struct _GVariant GVariant;
// NOLINTEND(bugprone-reserved-identifier,modernize-use-using)

namespace tavin::desktop {

// GNOME's settings of one schema. Reading never waits; writing is carried out soon after. Main
// thread, except where said.
class GioSettings {
 public:
  // None where the schema is not installed. A schema without a place of its own needs `path`;
  // `folder` is one with compiled schemas besides those of the system, for extensions.
  static std::optional<GioSettings> open(const QString& schema, const QString& path = {},
                                         const QString& folder = {});

  QStringList keys() const;
  // A text or a list of texts; empty for settings of other types and for keys that are not there.
  QStringList strings(const QString& key) const;
  // Writes nothing where that is the value already: each write is news to whoever listens.
  void setString(const QString& key, const QString& value);
  void setStrings(const QString& key, const QStringList& value);
  // False, and none, for settings of other types and for keys that are not there.
  bool flag(const QString& key) const;
  std::optional<double> number(const QString& key) const;
  void reset(const QString& key);

  // Waits until what was written is stored; any thread. Not bounded.
  static void sync();

 private:
  GioSettings(std::shared_ptr<GSettingsSchema> schema, std::shared_ptr<GSettings> settings)
      : schema_(std::move(schema)), settings_(std::move(settings)) {}
  using Value = std::unique_ptr<GVariant, void (*)(GVariant*)>;
  Value value(const QString& key) const;  // None where there is no such key.

  std::shared_ptr<GSettingsSchema> schema_;
  std::shared_ptr<GSettings> settings_;
};

}  // namespace tavin::desktop
