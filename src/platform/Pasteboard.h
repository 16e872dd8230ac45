#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tavin {

// One item of the clipboard: its types in the owner's order, each with its bytes. A type whose
// data could not be had is left out.
struct PasteboardItem {
  std::vector<std::pair<QString, QByteArray>> types;
  // What the clipboard that it was read from needs besides to give it back. Only that looks inside.
  std::shared_ptr<const void> manner = nullptr;
  bool operator==(const PasteboardItem& other) const { return types == other.types; }
};

// The general clipboard. Work queue only, every call bounded in time. What is written is served to
// other programs until one of them takes the clipboard over, whatever this program is doing.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  // Everything the clipboard holds; empty where it holds nothing. None where its owner did not
  // answer: then nothing is known about the contents, and they must not be replaced.
  virtual std::optional<std::vector<PasteboardItem>> pasteboardItems() = 0;
  // Grows whenever any program takes, replaces or clears the contents.
  virtual std::int64_t changeCount() = 0;
  // The contents as plain text, or none where they have no such form.
  virtual std::optional<QString> string() = 0;
  virtual void clearContents() = 0;
  // Replaces the contents.
  virtual void writeObjects(const std::vector<PasteboardItem>& items) = 0;
};

}  // namespace tavin
