#include "platform/Bundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "platform/Installation.h"

namespace tavin {

Bundle Bundle::main() {
  const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
  QDir resources = QFileInfo(executable).dir();
  Bundle bundle;
  bundle.windowProgram = QDir::cleanPath(resources.filePath(QLatin1String(librariesFromProgram)) +
                                         QStringLiteral("/tavin/tavin-windows"));
  if (executable.isEmpty() || !resources.cd(QLatin1String(dataFromProgram)) ||
      !resources.cd(QStringLiteral("tavin")))
    return bundle;
  bundle.resourcesDirectory = resources.path();
  QFile info(resources.filePath(QStringLiteral("info.json")));
  if (info.open(QIODevice::ReadOnly))
    bundle.info = QJsonDocument::fromJson(info.readAll()).object();
  return bundle;
}

}  // namespace tavin
