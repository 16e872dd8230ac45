#include "platform/desktop/DesktopEntry.h"

#include <QList>

namespace tavin::desktop {

QHash<QByteArray, QByteArray> parseDesktopEntry(const QByteArray& file) {
  QHash<QByteArray, QByteArray> entries;
  bool inGroup = false;
  for (const QByteArray& raw : file.split('\n')) {
    const QByteArray line = raw.trimmed();
    const qsizetype equals = line.indexOf('=');
    if (line.startsWith('['))
      inGroup = line == "[Desktop Entry]";
    else if (inGroup && equals > 0 && !line.startsWith('#'))
      entries.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
  }
  return entries;
}

QByteArray desktopEntryString(const QString& text) {
  QByteArray escaped = text.toUtf8();
  escaped.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t").replace("\r", "\\r");
  if (escaped.startsWith(' '))
    escaped.replace(0, 1, "\\s");  // Blanks after the equals sign do not count.
  return escaped;
}

QByteArray desktopEntryExecArgument(const QString& argument) {
  QString quoted;
  for (const QChar c : argument) {
    if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
      quoted += u'\\';
    quoted += c;
    if (c == u'%')  // Alone it would begin a field code.
      quoted += c;
  }
  return desktopEntryString(u'"' + quoted + u'"');
}

}  // namespace tavin::desktop
