#include "engine/EngineLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

namespace tavin::EngineLog {

QString path() { return QDir::home().filePath(QStringLiteral("Library/Logs/Tavin/engine.log")); }

int open() {
  const QString file = path();
  QDir().mkpath(QFileInfo(file).path());
  // O_APPEND rather than a seek to the end: an engine of an earlier run may still be writing.
  // O_NONBLOCK because a pipe in its place would keep us until someone reads it.
  const int fd = ::open(QFile::encodeName(file).constData(),
                        O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0644);
  struct stat status = {};
  if (fd < 0 ||
      (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && fcntl(fd, F_SETFL, O_APPEND) == 0))
    return fd;
  ::close(fd);
  return -1;
}

}  // namespace tavin::EngineLog
