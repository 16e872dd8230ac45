#include "words/Words.h"

#include <QCoreApplication>
#include <QStringList>

namespace tavin {

QString filled(const QString& pattern, const QStringList& arguments) {
  QString result;
  for (qsizetype at = 0; at < pattern.size(); ++at) {
    const bool sign = pattern[at] == u'%' && at + 1 < pattern.size();
    const qsizetype index = sign ? pattern[at + 1].unicode() - u'1' : -1;
    if (index < 0 || index >= arguments.size()) {
      result += pattern[at];
      continue;
    }
    result += arguments[index];
    ++at;
  }
  return result;
}

Words words(const char* context, const char* text, std::initializer_list<Words> arguments,
            const QByteArray& situation) {
  QStringList sources;
  QStringList shown;
  for (const Words& argument : arguments) {
    sources << argument.source;
    shown << argument.shown;
  }
  return {filled(QString::fromUtf8(text), sources),
          filled(QCoreApplication::translate(context, text, situation.constData()), shown)};
}

}  // namespace tavin
