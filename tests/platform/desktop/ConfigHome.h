#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

namespace tavin::desktop {

// An environment variable that has another value as long as this lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const QByteArray& value)
      : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
    qputenv(name, value);
  }
  ~ScopedVariable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  bool wasSet_;
  QByteArray before_;
};

// An empty $XDG_CONFIG_HOME.
class ConfigHome {
 public:
  QString path(const char* name) const { return directory_.filePath(QLatin1String(name)); }
  QByteArray read(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
      qFatal("cannot write a test's file");
  }

 private:
  QTemporaryDir directory_;
  ScopedVariable variable_{"XDG_CONFIG_HOME", directory_.path().toLocal8Bit()};
};

}  // namespace tavin::desktop
