#pragma once

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <string>

namespace tavin {

using XkbKeymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

// A keymap from a text in XKB's format, such as a compositor tells; null where it is none. Takes
// some milliseconds. Any thread.
XkbKeymap parseXkbKeymap(const std::string& text);

}  // namespace tavin
