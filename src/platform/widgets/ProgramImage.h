#pragma once

#include <QImage>

namespace tavin::widgets {

// The program's own icon, for its windows: the same where no theme has it.
QImage programImage(int size);

}  // namespace tavin::widgets
