#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <variant>

namespace tavin {

class UIElement;

// What an attribute can hold: another element, a text, or something that no caller reads.
struct OtherValue {};
using AttributeValue = std::variant<std::shared_ptr<UIElement>, QString, OtherValue>;

// An object of the accessibility tree. Called on the work queue; every call is bounded in time.
class UIElement {
 public:
  virtual ~UIElement() = default;
  // How long one message to another program may take, in seconds.
  virtual void setMessagingTimeout(float seconds) = 0;
  // The attribute's value, or none where the element has none, does not answer or is gone.
  virtual std::optional<AttributeValue> copyAttributeValue(const QString& attribute) = 0;
};

// The desktop's accessibility interface.
class Accessibility {
 public:
  virtual ~Accessibility() = default;
  // Whether other programs' selections can be read. With `prompt`, also does what this desktop
  // needs to grant it. Any thread, bounded in time.
  virtual bool isProcessTrusted(bool prompt) = 0;
  // The element whose "AXFocusedUIElement" is what has the keyboard. Work queue. Never null.
  virtual std::shared_ptr<UIElement> createSystemWideElement() = 0;
};

}  // namespace tavin
