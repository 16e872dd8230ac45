#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tavin::x11 {

// Compound text is Latin-1 but for the parts in other encodings, between escape sequences. Those
// in UTF-8 are understood; none where there are others, of the age before Unicode.
std::optional<QString> fromCompoundText(const QByteArray& bytes);

}  // namespace tavin::x11
