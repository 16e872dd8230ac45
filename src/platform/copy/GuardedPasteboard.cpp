#include "platform/copy/GuardedPasteboard.h"

namespace tavin::copy {

std::optional<std::vector<PasteboardItem>> GuardedPasteboard::pasteboardItems() {
  if (!keyboard_.isReady())
    return std::nullopt;
  typedBefore_ = keyboard_.commandsTyped();
  countBefore_.reset();
  return pasteboard_->pasteboardItems();
}

std::int64_t GuardedPasteboard::changeCount() {
  if (!countBefore_)
    countBefore_ = pasteboard_->changeCount();
  return keyboard_.commandsTyped() == typedBefore_ ? *countBefore_ : pasteboard_->changeCount();
}

}  // namespace tavin::copy
