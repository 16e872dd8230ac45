#include "engine/EngineLog.h"

#include <fcntl.h>

#include <QDir>
#include <QFile>

namespace tavin::EngineLog {

QString path() { return QDir::home().filePath(QStringLiteral("Library/Logs/Tavin/engine.log")); }

int open() {
  const QString file = path();
  QDir().mkpath(QFileInfo(file).path());
  // O_APPEND rather than a seek to the end: an engine of an earlier run may still be writing.
  return ::open(QFile::encodeName(file).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC,
                0644);
}

}  // namespace tavin::EngineLog
