#include "platform/posix/LogLine.h"

#include <poll.h>
#include <sys/syslog.h>
#include <unistd.h>

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <mutex>

#include "platform/posix/LocalSocket.h"

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

// Whether a write of one block would be taken at once; a reader of our pipe may have stopped.
bool standardErrorTakes() {
  pollfd descriptor = {STDERR_FILENO, POLLOUT, 0};
  return poll(&descriptor, 1, 0) == 1 && (descriptor.revents & POLLOUT) != 0;
}

void writeToStandardError(const QByteArray& line) {
  static std::mutex oneAtATime;  // Else another thread could fill what was free when we looked.
  const std::lock_guard lock(oneAtATime);
  const QByteArray bytes = line + '\n';  // One write for all but the longest lines.
  qsizetype done = 0;
  while (done < bytes.size() && standardErrorTakes()) {
    const qsizetype size = std::min<qsizetype>(bytes.size() - done, PIPE_BUF);
    const ssize_t count =
        ::write(STDERR_FILENO, bytes.data() + done, static_cast<std::size_t>(size));
    if (count < 0 && errno != EINTR)
      return;
    done += count > 0 ? count : 0;
  }
}

// The classic header: priority, local time in English whatever the locale, name and process.
QByteArray syslogMessage(int severity, const QByteArray& line) {
  const QDateTime now = QDateTime::currentDateTime();
  const QLocale english = QLocale::c();
  const QByteArray time = (english.toString(now, QStringLiteral("MMM ")) +
                           QString::number(now.date().day()).rightJustified(2, u' ') +
                           english.toString(now, QStringLiteral(" HH:mm:ss")))
                              .toLatin1();
  return '<' + QByteArray::number(LOG_USER | severity) + '>' + time + " tavin[" +
         QByteArray::number(static_cast<qint64>(getpid())) + "]: " + line.left(longestSyslogLine);
}

// The C library's syslog() would wait for a daemon that has stopped reading.
void writeToSyslog(const std::string& path, int severity, const QByteArray& line) {
  const LocalAddress address(path);
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!address || !socket)
    return;
  const QByteArray message = syslogMessage(severity, line);
  sendto(socket.get(), message.data(), message.size(), MSG_DONTWAIT | MSG_NOSIGNAL, address.get(),
         address.size());
}

}  // namespace

void writeLogLine(const QString& text, int severity, const std::string& syslogSocket) {
  const QByteArray line = singleLine(text);
  writeToStandardError(line);
  writeToSyslog(syslogSocket, severity, line);
}

}  // namespace tavin::posix
