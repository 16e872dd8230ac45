#include "platform/copy/ClipboardTypes.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace tavin::copy {
namespace {

enum class Rank { text, files, data, png, otherImage };

bool beginsWith(const std::string& type, const char* prefix) { return type.rfind(prefix, 0) == 0; }

Rank rankOf(const std::string& type) {
  static const std::set<std::string> texts{"UTF8_STRING", "STRING", "TEXT", "COMPOUND_TEXT"};
  static const std::set<std::string> files{"text/uri-list", "x-special/gnome-copied-files"};
  static const std::set<std::string> images{"PIXMAP", "BITMAP", "application/x-qt-image"};
  if (texts.contains(type) || type == "text/plain" || beginsWith(type, "text/plain;"))
    return Rank::text;
  if (type == "image/png")
    return Rank::png;
  if (files.contains(type))
    return Rank::files;
  return beginsWith(type, "image/") || images.contains(type) ? Rank::otherImage : Rank::data;
}

bool isQuestionToOwner(const std::string& type) {
  static const std::set<std::string> questions{"TARGETS",         "TIMESTAMP", "MULTIPLE",
                                               "SAVE_TARGETS",    "DELETE",    "INSERT_SELECTION",
                                               "INSERT_PROPERTY", "INCR",      ""};
  return questions.contains(type);
}

}  // namespace

std::vector<std::size_t> clipboardAskingOrder(const std::vector<std::string>& types) {
  std::vector<std::size_t> order(types.size());
  std::iota(order.begin(), order.end(), 0);
  std::erase_if(order, [&](std::size_t index) { return isQuestionToOwner(types[index]); });
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return rankOf(types[a]) < rankOf(types[b]);
  });
  return order;
}

bool isNeededClipboardType(const std::string& type) {
  const Rank rank = rankOf(type);
  return rank == Rank::text || rank == Rank::files || rank == Rank::png;
}

}  // namespace tavin::copy
