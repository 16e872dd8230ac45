#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <csignal>

namespace tavin::test {

// A real program that runs for as long as this object lives.
class Program {
 public:
  explicit Program(const QStringList& command) {
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start(command.first(), command.mid(1));
    process_.waitForStarted(10'000);
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished(10'000);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  qint64 processId() const { return process_.processId(); }
  // False where it has ended: the signal would then go to the test's own group.
  bool suspend() const {
    const auto id = static_cast<pid_t>(process_.processId());
    return id > 0 && kill(id, SIGSTOP) == 0;
  }

 private:
  QProcess process_;
};

}  // namespace tavin::test
