#include "platform/kde/KeyInPlace.h"

#include <xkbcommon/xkbcommon.h>

#include <QChar>
#include <Qt>
#include <memory>

namespace tavin::kde {
namespace {

using Context = std::unique_ptr<xkb_context, decltype(&xkb_context_unref)>;
using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

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
  const Context context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), xkb_context_unref);
  if (!context)
    return Qt::Key_R;
  xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
  const Keymap keymap(
      xkb_keymap_new_from_string(context.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                 XKB_KEYMAP_COMPILE_NO_FLAGS),
      xkb_keymap_unref);
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
