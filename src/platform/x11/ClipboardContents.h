#pragma once

#include <QByteArray>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/x11/Connection.h"

namespace tavin::x11 {

// One form in which a selection is offered.
struct ClipboardTarget {
  xcb_atom_t target = XCB_ATOM_NONE;
  xcb_atom_t type = XCB_ATOM_NONE;  // The property type it is delivered as; mostly the target.
  std::uint8_t format = 8;
  QByteArray bytes;
};

// All forms, in the owner's order, without the targets that are questions to the owner.
using ClipboardContents = std::vector<ClipboardTarget>;

}  // namespace tavin::x11
