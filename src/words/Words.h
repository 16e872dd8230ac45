#pragma once

#include <QByteArray>
#include <QString>
#include <initializer_list>
#include <utility>

namespace tavin {

// A text for the user, twice: as the source has it, by which texts are compared, and in the user's
// language, as it is shown. The two are the same where no catalogue is installed, as in the C
// locale.
struct Words {
  // A text from elsewhere, which no catalogue has.
  Words(const QString& text) : source(text), shown(text) {}  // NOLINT(google-explicit-constructor)
  Words(QString sourceText, QString shownText)
      : source(std::move(sourceText)), shown(std::move(shownText)) {}

  QString source;
  QString shown;
};

// A text that is marked for the catalogues by QT_TRANSLATE_NOOP, with %1, %2 and so on replaced by
// `arguments`. `situation` picks among a catalogue's entries for the same text, such as those of a
// desktop; one that the catalogue does not tell apart gets the general entry. Any thread, once the
// catalogue is installed.
Words words(const char* context, const char* text, std::initializer_list<Words> arguments = {},
            const QByteArray& situation = {});

// `pattern` with its %1, %2 ... replaced in one pass: an argument may itself hold such a sign.
QString filled(const QString& pattern, const QStringList& arguments);

}  // namespace tavin
