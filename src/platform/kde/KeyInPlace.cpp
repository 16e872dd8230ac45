#include "platform/kde/KeyInPlace.h"

#include <QChar>
#include <Qt>

#include "platform/XkbKeymap.h"

namespace tavin::kde {
namespace {

// The capital of the letter there, for so Qt numbers them; 0 where it is none.
char32_t letterOn(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout, bool shifted) {
  const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, layout);
  const xkb_keysym_t* symbols = nullptr;
  if (xkb_keymap_key_get_syms_by_level(keymap, key, layout, shifted && levels > 1 ? 1 : 0,
                                       &symbols) != 1)
    return 0;
  const char32_t character = xkb_keysym_to_utf32(symbols[0]);
  return QChar::isLetter(character) ? QChar::toUpper(character) : 0;
}

}  // namespace

int keyInPlaceOfR(const std::string& text, bool shifted) {
  const XkbKeymap keymap = parseXkbKeymap(text);
  if (!keymap)
    return Qt::Key_R;
  // The fourth key of the upper row of letters.
  const xkb_keycode_t key = xkb_keymap_key_by_name(keymap.get(), "AD04");
  const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap.get(), key);
  for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
    const char32_t letter = letterOn(keymap.get(), key, layout, shifted);
    if (letter >= U'A' && letter <= U'Z')
      return static_cast<int>(letter);
  }
  return static_cast<int>(letterOn(keymap.get(), key, 0, shifted));
}

}  // namespace tavin::kde
