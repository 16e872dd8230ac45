#include "platform/desktop/ClipboardTypes.h"

#include <set>

namespace tavin::desktop {
namespace {

bool beginsWith(const std::string& type, const char* prefix) { return type.rfind(prefix, 0) == 0; }

}  // namespace

ClipboardRank clipboardRankOf(const std::string& type) {
  static const std::set<std::string> texts{"UTF8_STRING", "STRING", "TEXT", "COMPOUND_TEXT"};
  static const std::set<std::string> images{"PIXMAP", "BITMAP", "application/x-qt-image"};
  if (texts.contains(type) || type == "text/plain" || beginsWith(type, "text/plain;"))
    return ClipboardRank::text;
  if (type == "image/png")
    return ClipboardRank::png;
  return beginsWith(type, "image/") || images.contains(type) ? ClipboardRank::otherImage
                                                             : ClipboardRank::data;
}

bool isQuestionToOwner(const std::string& type) {
  static const std::set<std::string> questions{"TARGETS",         "TIMESTAMP", "MULTIPLE",
                                               "SAVE_TARGETS",    "DELETE",    "INSERT_SELECTION",
                                               "INSERT_PROPERTY", ""};
  return questions.contains(type);
}

}  // namespace tavin::desktop
