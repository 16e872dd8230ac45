#pragma once

#include <QMenu>
#include <functional>
#include <optional>
#include <vector>

#include "platform/windowlink/Messages.h"

namespace tavin::widgets {

// Draws the lines into an empty `widget`. `chosen` is called with a command's number when the menu
// has closed for it.
void fillMenu(QMenu& widget, const std::vector<windowlink::MenuLine>& lines,
              const std::function<void(quint32)>& chosen);

// Opens the filled menu in front, with the keyboard, without a position at the pointer. Returns at
// once.
void popUp(QMenu& widget, std::optional<QPoint> position);

}  // namespace tavin::widgets
