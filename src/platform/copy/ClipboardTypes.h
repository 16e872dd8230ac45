#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavin::copy {

// The indices of the types in the order in which a clipboard's contents are asked for: toolkits
// encode every image format when asked, so these come last. Types that ask the owner something,
// make it do something or announce a transfer in pieces, instead of naming a form of the contents,
// are left out.
std::vector<std::size_t> clipboardAskingOrder(const std::vector<std::string>& types);

// Whether contents are worth nothing without that form, once it was offered.
bool isNeededClipboardType(const std::string& type);

}  // namespace tavin::copy
