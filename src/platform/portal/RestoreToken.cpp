#include "platform/portal/RestoreToken.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace tavin::portal {
namespace {

constexpr qint64 longest = 4096;

}  // namespace

RestoreToken::RestoreToken()
    : RestoreToken(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                   QStringLiteral("/tavin/remote-desktop-token")) {}

QString RestoreToken::read() const {
  QFile file(path_);
  // A pipe in its place could keep us waiting.
  if (!QFileInfo(path_).isFile() || !file.open(QIODevice::ReadOnly))
    return {};
  return QString::fromUtf8(file.read(longest)).trimmed();
}

void RestoreToken::store(const QString& token) const {
  QDir().mkpath(QFileInfo(path_).path());
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly) ||
      !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
    return;
  file.write(token.toUtf8());
  file.commit();
}

}  // namespace tavin::portal
