#pragma once

#include <QColor>

namespace tavin::widgets {

// How well one is seen on the other, as WCAG has it: from 1, the same, to 21, black on white.
double contrast(const QColor& one, const QColor& other);

}  // namespace tavin::widgets
