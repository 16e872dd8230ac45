#pragma once

#include <QStringList>

namespace tavin::desktop {

// The user's languages for messages, the most wanted first, such as "de_AT", "fr"; none in the C
// locale, where each text shows as the source has it. From LC_ALL, LC_MESSAGES, LANG and LANGUAGE,
// as gettext reads them.
QStringList messageLanguages();

// Installs the program's catalogue for the first of them that there is one for, English where there
// is none, and Qt's own beside it; with it comes the direction of the layout. Once, on the main
// thread, before any text is shown. Needs a QGuiApplication.
void installCatalogue(const QStringList& languages);

}  // namespace tavin::desktop
