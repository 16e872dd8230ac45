#pragma once

#include <string>

namespace tavin::desktop {

// In which order the forms of a clipboard's contents are asked for: toolkits encode every image
// format when asked, so these come last.
enum class ClipboardRank { text, data, png, otherImage };
ClipboardRank clipboardRankOf(const std::string& type);

// Types that ask the owner something, or make it do something, instead of naming a form.
bool isQuestionToOwner(const std::string& type);

}  // namespace tavin::desktop
