#include "platform/copy/CopyChord.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <initializer_list>

#include "platform/XkbKeymap.h"

namespace tavin::copy {
namespace {

constexpr xkb_keycode_t firstKeyOfKernel = 8;  // Its number 0.

// In each of its layouts: which of them is active is not known, and in another one the key may be
// Delete.
bool hasSymbol(xkb_keymap* keymap, xkb_keycode_t key, xkb_keysym_t symbol) {
  const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap, key);
  for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap, key, layout, 0, &symbols) != 1 ||
        symbols[0] != symbol)
      return false;
  }
  return layouts > 0;
}

std::optional<int> keyFor(xkb_keymap* keymap, xkb_keysym_t symbol) {
  const xkb_keycode_t last = xkb_keymap_max_keycode(keymap);
  for (xkb_keycode_t key = firstKeyOfKernel; key <= last; ++key)
    if (hasSymbol(keymap, key, symbol))
      return static_cast<int>(key - firstKeyOfKernel);
  return std::nullopt;
}

}  // namespace

std::optional<ChordKeys> chordKeysIn(const std::string& text) {
  const XkbKeymap keymap = parseXkbKeymap(text);
  if (!keymap)
    return ChordKeys();
  const auto control = keyFor(keymap.get(), XKB_KEY_Control_L);
  const auto insert = keyFor(keymap.get(), XKB_KEY_Insert);
  return control && insert ? std::optional(ChordKeys{*control, *insert}) : std::nullopt;
}

bool ChordInLayout::lookUp(const std::string& keymap) {
  if (keymap_ != keymap) {
    keys_ = chordKeysIn(keymap);
    keymap_ = keymap;
  }
  return keys_.has_value();
}

// Alt comes up while Control is down: one that comes up alone opens the menu bar of some programs.
std::vector<KeyStep> copyChord(ChordKeys keys, bool releaseFirst) {
  std::vector<KeyStep> steps;
  const auto release = [&](std::initializer_list<int> held) {
    if (!releaseFirst)
      return;
    for (const int key : held) steps.push_back({key, false});
  };
  release(
      {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTMETA, KEY_RIGHTMETA});
  steps.push_back({keys.control, true});
  release({KEY_LEFTALT, KEY_RIGHTALT});
  steps.insert(steps.end(), {{keys.insert, true}, {keys.insert, false}, {keys.control, false}});
  return steps;
}

}  // namespace tavin::copy
