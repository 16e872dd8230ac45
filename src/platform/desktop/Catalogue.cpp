#include "platform/desktop/Catalogue.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>

namespace tavin::desktop {
namespace {

const QString catalogues = QStringLiteral(":/translations");
const QString otherwise = QStringLiteral("en");

// "de_AT.UTF-8@euro" is the language "de_AT"; empty for the C locale.
QString languageOf(const QString& locale) {
  const QString name = locale.section(u'.', 0, 0).section(u'@', 0, 0);
  return name == QLatin1String("C") || name == QLatin1String("POSIX") ? QString() : name;
}

void install(std::unique_ptr<QTranslator> translator) {
  QTranslator* installed = translator.release();
  installed->setParent(qGuiApp);
  QCoreApplication::installTranslator(installed);
}

// Of the texts that Qt's own widgets show, such as the menu of a text field.
void installQtCatalogue(const QString& language) {
  auto translator = std::make_unique<QTranslator>();
  if (translator->load(QStringLiteral("qtbase_") + language,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    install(std::move(translator));
}

// QTranslator itself goes from "de_AT" to "de".
bool installFor(const QString& language) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(QStringLiteral("tavin_") + language, catalogues))
    return false;
  QGuiApplication::setLayoutDirection(QLocale(translator->language()).textDirection());
  installQtCatalogue(language);
  install(std::move(translator));
  return true;
}

}  // namespace

QStringList messageLanguages() {
  QString locale;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (locale.isEmpty())
      locale = qEnvironmentVariable(variable);
  QStringList languages{languageOf(locale)};
  if (languages.first().isEmpty())
    return {};
  const QStringList wanted = qEnvironmentVariable("LANGUAGE").split(u':', Qt::SkipEmptyParts);
  for (auto each = wanted.rbegin(); each != wanted.rend(); ++each)
    if (const QString language = languageOf(*each); !language.isEmpty())
      languages.prepend(language);
  return languages;
}

void installCatalogue(const QStringList& languages) {
  if (languages.isEmpty())
    return;
  for (const QString& language : languages)
    if (installFor(language))
      return;
  installFor(otherwise);
}

}  // namespace tavin::desktop
