#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/wayland/SelectionReader.h"

namespace tavin::wayland {

// Reads everything that the clipboard offers: one item, or none where it is empty. What does not
// come in time is left out, save texts, lists of files and PNG images. None where it cannot be
// known what the clipboard holds: the compositor does not answer, the owner is too slow with those
// or with all that it offers, or it ends while it is read.
std::optional<std::vector<PasteboardItem>> readClipboard(SelectionReader& reader,
                                                         Deadline deadline);

// A selection as plain text, or none where it has no such form or its owner does not answer.
std::optional<QString> readText(SelectionReader& reader, SelectionKind selection,
                                Deadline deadline);

}  // namespace tavin::wayland
