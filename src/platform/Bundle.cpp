#include "platform/Bundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace tavin {

Bundle Bundle::main() {
  const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
  QDir prefix = QFileInfo(executable).dir();
  Bundle bundle;
  if (executable.isEmpty() || !prefix.cdUp() || !prefix.cd(QStringLiteral("share/tavin")))
    return bundle;
  bundle.resourcesDirectory = prefix.path();
  QFile info(prefix.filePath(QStringLiteral("info.json")));
  if (info.open(QIODevice::ReadOnly))
    bundle.info = QJsonDocument::fromJson(info.readAll()).object();
  return bundle;
}

}  // namespace tavin
