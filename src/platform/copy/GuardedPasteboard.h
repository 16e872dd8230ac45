#pragma once

#include <memory>
#include <optional>

#include "platform/Pasteboard.h"
#include "platform/copy/CopyKeyboard.h"

namespace tavin::copy {

// A clipboard that is left alone where no copy can be made: its contents are not even read, and
// where the copy command is not typed in the end, what happened to it meanwhile is the user's doing
// and counts as no change. Once it is typed, every change since the contents were read counts.
class GuardedPasteboard final : public Pasteboard {
 public:
  // `keyboard` must outlive it.
  GuardedPasteboard(std::unique_ptr<Pasteboard> pasteboard, CopyKeyboard& keyboard)
      : pasteboard_(std::move(pasteboard)), keyboard_(keyboard) {}

  std::optional<std::vector<PasteboardItem>> pasteboardItems() override;
  std::int64_t changeCount() override;
  std::optional<QString> string() override { return pasteboard_->string(); }
  void clearContents() override { pasteboard_->clearContents(); }
  void writeObjects(const std::vector<PasteboardItem>& items) override {
    pasteboard_->writeObjects(items);
  }

 private:
  const std::unique_ptr<Pasteboard> pasteboard_;
  CopyKeyboard& keyboard_;
  int typedBefore_ = 0;
  std::optional<std::int64_t> countBefore_;  // None until it is asked for after the contents.
};

}  // namespace tavin::copy
