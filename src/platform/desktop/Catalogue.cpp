#include "platform/desktop/Catalogue.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>
#include <memory>

namespace tavin::desktop {
namespace {

const QString catalogues = QStringLiteral(":/translations");
const QString otherwise = QStringLiteral("en");

bool rightToLeftNow = false;

// "de_AT.UTF-8@euro" is the language "de_AT"; empty for the C locale.
QString languageOf(const QString& locale) {
  const QString name = locale.section(u'.', 0, 0).section(u'@', 0, 0);
  return name == QLatin1String("C") || name == QLatin1String("POSIX") ? QString() : name;
}

// QTranslator itself goes from "de_AT" to "de".
bool installFor(const QString& language) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(QStringLiteral("tavin_") + language, catalogues))
    return false;
  setRightToLeft(QLocale(translator->language()).textDirection() == Qt::RightToLeft);
  QTranslator* installed = translator.release();
  installed->setParent(QCoreApplication::instance());
  QCoreApplication::installTranslator(installed);
  return true;
}

}  // namespace

QStringList messageLanguages() {
  QString locale;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (locale.isEmpty())
      locale = qEnvironmentVariable(variable);
  const QString own = languageOf(locale);
  if (own.isEmpty())
    return {};
  QStringList languages;
  for (const QString& each : qEnvironmentVariable("LANGUAGE").split(u':'))
    if (const QString language = languageOf(each); !language.isEmpty())
      languages << language;
  return languages << own;
}

QString installCatalogue(const QStringList& languages) {
  if (languages.isEmpty())
    return {};
  for (const QString& language : languages)
    if (installFor(language))
      return language;
  installFor(otherwise);
  return otherwise;
}

bool isRightToLeft() { return rightToLeftNow; }
void setRightToLeft(bool rightToLeft) { rightToLeftNow = rightToLeft; }

}  // namespace tavin::desktop
