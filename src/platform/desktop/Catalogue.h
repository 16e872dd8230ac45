#pragma once

#include <QStringList>

namespace tavin::desktop {

// The user's languages for messages, the most wanted first, such as "de_AT", "fr"; none in the C
// locale, where each text shows as the source has it. From LC_ALL, LC_MESSAGES, LANG and LANGUAGE,
// as gettext reads them.
QStringList messageLanguages();

// Installs the program's catalogue for the first of them that there is one for, English where there
// is none; with it comes the direction of the lines. Returns its language, none in the C locale.
// Once, on the main thread, before any text is shown. Needs a QCoreApplication.
QString installCatalogue(const QStringList& languages);

// Whether lines are read from right to left. Main thread.
bool isRightToLeft();
void setRightToLeft(bool rightToLeft);

}  // namespace tavin::desktop
