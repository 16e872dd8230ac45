#include "selection/Selection.h"

#include "platform/Platform.h"

namespace tavin {
namespace {

constexpr float messagingTimeout = 0.3F;  // Seconds for one message to another program.

template <typename T>
std::optional<T> attribute(UIElement& element, const QString& name) {
  const auto value = element.copyAttributeValue(name);
  const T* typed = value ? std::get_if<T>(&*value) : nullptr;
  return typed ? std::optional(*typed) : std::nullopt;
}

}  // namespace

Selection::Selection(Accessibility& accessibility, Keyboard& keyboard, Pasteboard& pasteboard)
    : accessibility_(accessibility), keyboard_(keyboard), pasteboard_(pasteboard) {}

Selection::Selection(Platform& platform)
    : Selection(*platform.accessibility, *platform.keyboard, *platform.pasteboard) {}

bool Selection::isTrusted(bool prompt) const { return accessibility_.isProcessTrusted(prompt); }

std::optional<QString> Selection::unlessBlank(std::optional<QString> text) {
  if (text && text->trimmed().isEmpty())
    return std::nullopt;
  return text;
}

std::optional<QString> Selection::current() const {
  if (auto text = viaAccessibility())
    return text;
  return viaCopy();
}

std::optional<QString> Selection::viaAccessibility() const {
  const auto systemWide = accessibility_.createSystemWideElement();
  systemWide->setMessagingTimeout(messagingTimeout);
  const auto focused =
      attribute<std::shared_ptr<UIElement>>(*systemWide, QStringLiteral("AXFocusedUIElement"));
  if (!focused || !*focused)
    return std::nullopt;
  return unlessBlank(attribute<QString>(**focused, QStringLiteral("AXSelectedText")));
}

}  // namespace tavin
