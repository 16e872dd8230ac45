#pragma once

#include <QString>
#include <optional>

namespace tavin {

class Accessibility;
class Keyboard;
class Pasteboard;
struct Platform;

// The text that the user has selected in the program that has the keyboard. A text that comes back
// is never empty or blank, and keeps its own leading and trailing white space. Stateless: it
// refers to what it is made from, which must outlive it.
class Selection {
 public:
  Selection(Accessibility& accessibility, Keyboard& keyboard, Pasteboard& pasteboard);
  explicit Selection(Platform& platform);

  // Whether selections can be read at all; with `prompt` the system asks the user where they
  // cannot. Main thread and work queue.
  bool isTrusted(bool prompt) const;
  // Through accessibility or, failing that, by a copy. Work queue only: it blocks.
  std::optional<QString> current() const;
  std::optional<QString> viaAccessibility() const;
  // Makes the focused program copy, and gives the clipboard back as it was.
  std::optional<QString> viaCopy() const;

 private:
  static std::optional<QString> unlessBlank(std::optional<QString> text);

  // SelectionByCopy.cpp
  void waitForModifiersUp() const;
  void postCommandC() const;
  void postKey(bool down) const;
  bool waitForCopy(std::int64_t startingCount) const;

  Accessibility& accessibility_;
  Keyboard& keyboard_;
  Pasteboard& pasteboard_;
};

}  // namespace tavin
