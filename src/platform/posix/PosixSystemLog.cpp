#include "platform/posix/PosixSystemLog.h"

#include <sys/socket.h>
#include <sys/syslog.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDateTime>
#include <QLocale>
#include <cerrno>
#include <utility>

#include "platform/posix/FileDescriptor.h"

namespace tavin::posix {
namespace {

constexpr qsizetype longestSyslogLine = 8000;

QByteArray singleLine(const QString& text) {
  QByteArray line = text.toUtf8();
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
      c = ' ';
  }
  return line;
}

void writeToStandardError(const QByteArray& line) {
  const QByteArray bytes = line + '\n';  // One write, so that lines of two threads do not mix.
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::write(STDERR_FILENO, bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno != EINTR)
      return;
    done += count > 0 ? count : 0;
  }
}

// The classic header: priority, local time in English whatever the locale, name and process.
QByteArray syslogMessage(const QByteArray& line) {
  const QDateTime now = QDateTime::currentDateTime();
  const QLocale english = QLocale::c();
  const QByteArray time = (english.toString(now, QStringLiteral("MMM ")) +
                           QString::number(now.date().day()).rightJustified(2, u' ') +
                           english.toString(now, QStringLiteral(" HH:mm:ss")))
                              .toLatin1();
  return '<' + QByteArray::number(LOG_USER | LOG_NOTICE) + '>' + time + " tavin[" +
         QByteArray::number(static_cast<qint64>(getpid())) + "]: " + line.left(longestSyslogLine);
}

// The C library's syslog() would wait for a daemon that has stopped reading.
void writeToSyslog(const std::string& path, const QByteArray& line) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path)
    return;
  path.copy(address.sun_path, path.size());
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket)
    return;
  const QByteArray message = syslogMessage(line);
  sendto(socket.get(), message.data(), message.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
         reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

}  // namespace

PosixSystemLog::PosixSystemLog(std::string syslogSocket) : syslogSocket_(std::move(syslogSocket)) {}

void PosixSystemLog::write(const QString& text) {
  const QByteArray line = singleLine(text);
  writeToStandardError(line);
  writeToSyslog(syslogSocket_, line);
}

}  // namespace tavin::posix
