#include "platform/XkbKeymap.h"

namespace tavin {

// The keymap holds its context.
XkbKeymap parseXkbKeymap(const std::string& text) {
  const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
      xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), xkb_context_unref);
  if (!context)
    return {nullptr, xkb_keymap_unref};
  xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
  return {xkb_keymap_new_from_string(context.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                     XKB_KEYMAP_COMPILE_NO_FLAGS),
          xkb_keymap_unref};
}

}  // namespace tavin
