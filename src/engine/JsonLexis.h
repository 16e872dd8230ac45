#pragma once

#include <QByteArrayView>

namespace tavin {

// Whether numbers and strings are written as RFC 8259 has them, and every escaped surrogate is one
// of a pair. Qt's parser lets through ".5", "\q", a raw line feed in a string and half a character,
// and takes -2^63 - 1 for -2^63.
// Looks at nothing else: the structure and the UTF-8 are the parser's.
bool hasStrictJsonLexis(QByteArrayView json);

}  // namespace tavin
