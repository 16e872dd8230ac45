#pragma once

#include <optional>

#include "platform/x11/ClipboardContents.h"
#include "platform/x11/SelectionReader.h"

namespace tavin::x11 {

struct ClipboardSnapshot {
  bool owned = false;  // False where no program owns the clipboard: it is empty.
  ClipboardContents contents;
};

// Reads everything that the clipboard offers. Refused targets are left out, and so is what does not
// come in time, save texts, lists of files and PNG images. None where it cannot be known what the
// clipboard holds: the owner does not answer, is too slow with those or with all that it offers, or
// ends while it is read.
std::optional<ClipboardSnapshot> readClipboard(SelectionReader& reader, Deadline deadline);

}  // namespace tavin::x11
