#pragma once

#include <functional>

#include "fake/Journal.h"
#include "platform/Accessibility.h"
#include "platform/Keyboard.h"
#include "platform/Pasteboard.h"

namespace tavin::test {

// An accessibility tree of one focused element, which has the selected text or does not.
class FakeAccessibility final : public Accessibility {
 public:
  explicit FakeAccessibility(Journal& journal) : journal_(journal) {}

  bool isProcessTrusted(bool prompt) override {
    journal_.add(QStringLiteral("trusted? prompt=%1").arg(prompt));
    return trusted;
  }
  std::shared_ptr<UIElement> createSystemWideElement() override {
    return std::make_shared<Element>(*this, true);
  }

  bool trusted = true;
  bool hasFocusedElement = true;
  std::optional<AttributeValue> focusedElement;  // Replaces the ordinary one.
  std::optional<AttributeValue> selectedText;

 private:
  struct Element final : UIElement {
    Element(FakeAccessibility& ownerOf, bool isSystemWide)
        : owner(ownerOf), systemWide(isSystemWide) {}
    void setMessagingTimeout(float seconds) override {
      owner.journal_.add(QStringLiteral("messaging timeout %1").arg(seconds));
    }
    std::optional<AttributeValue> copyAttributeValue(const QString& name) override {
      owner.journal_.add(QStringLiteral("copy ") + name);
      if (systemWide && name == QStringLiteral("AXFocusedUIElement")) {
        if (owner.focusedElement)
          return owner.focusedElement;
        if (!owner.hasFocusedElement)
          return std::nullopt;
        return std::make_shared<Element>(owner, false);
      }
      return !systemWide && name == QStringLiteral("AXSelectedText") ? owner.selectedText
                                                                     : std::nullopt;
    }
    FakeAccessibility& owner;
    const bool systemWide;
  };

  Journal& journal_;
};

class FakePasteboard final : public Pasteboard {
 public:
  explicit FakePasteboard(Journal& journal) : journal_(journal) {}

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override {
    journal_.add(QStringLiteral("read pasteboard"));
    if (onRead)
      onRead();
    return readable ? std::optional(items) : std::nullopt;
  }
  std::int64_t changeCount() override { return count; }
  std::optional<QString> string() override {
    journal_.add(QStringLiteral("read string"));
    for (const auto& item : items)
      for (const auto& [type, data] : item.types)
        if (type == QStringLiteral("text"))
          return QString::fromUtf8(data);
    return std::nullopt;
  }
  void clearContents() override {
    journal_.add(QStringLiteral("clear pasteboard"));
    items.clear();
    ++count;
  }
  void writeObjects(const std::vector<PasteboardItem>& written) override {
    journal_.add(QStringLiteral("write %1 items").arg(written.size()));
    items = written;
    ++count;
  }
  // Another program copies.
  void copied(std::vector<PasteboardItem> contents) {
    items = std::move(contents);
    ++count;
  }

  std::function<void()> onRead;  // Runs while the items are read.
  std::vector<PasteboardItem> items;
  std::int64_t count = 41;
  bool readable = true;

 private:
  Journal& journal_;
};

class FakeKeyboard final : public Keyboard {
 public:
  explicit FakeKeyboard(Journal& journal) : journal_(journal) {}

  std::uint64_t flagsState() override { return flags ? flags() : 0; }
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) override {
    if (down ? !makesKeyDown : !makesKeyUp)
      return nullptr;
    return std::make_unique<Event>(*this, keyCode, down);
  }

  std::function<std::uint64_t()> flags;  // Asked at every look at the modifiers.
  std::function<void()> onCommandC;      // Runs when the key has come up again.
  bool makesKeyDown = true;
  bool makesKeyUp = true;

 private:
  struct Event final : KeyboardEvent {
    Event(FakeKeyboard& ownerOf, std::uint16_t key, bool isDown)
        : owner(ownerOf), keyCode(key), down(isDown) {}
    void setFlags(std::uint64_t given) override { eventFlags = given; }
    void post() override {
      owner.journal_.add(QStringLiteral("key %1 %2 flags 0x%3")
                             .arg(keyCode)
                             .arg(down ? QStringLiteral("down") : QStringLiteral("up"))
                             .arg(eventFlags, 0, 16));
      if (!down && owner.onCommandC)
        owner.onCommandC();
    }
    FakeKeyboard& owner;
    const std::uint16_t keyCode;
    const bool down;
    std::uint64_t eventFlags = 0;
  };

  Journal& journal_;
};

}  // namespace tavin::test
