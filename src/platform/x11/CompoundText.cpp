#include "platform/x11/CompoundText.h"

namespace tavin::x11 {

std::optional<QString> fromCompoundText(const QByteArray& bytes) {
  const QByteArray beginUtf8("\x1b%G");
  const QByteArray endUtf8("\x1b%@");
  QString text;
  for (qsizetype at = 0; at < bytes.size();) {
    const qsizetype begin = bytes.indexOf('\x1b', at);
    text += QString::fromLatin1(bytes.mid(at, begin < 0 ? -1 : begin - at));
    if (begin < 0)
      break;
    if (bytes.mid(begin, beginUtf8.size()) != beginUtf8)
      return std::nullopt;
    const qsizetype from = begin + beginUtf8.size();
    const qsizetype end = bytes.indexOf(endUtf8, from);
    text += QString::fromUtf8(bytes.mid(from, end < 0 ? -1 : end - from));
    at = end < 0 ? bytes.size() : end + endUtf8.size();
  }
  return text;
}

}  // namespace tavin::x11
