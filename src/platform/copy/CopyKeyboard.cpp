#include "platform/copy/CopyKeyboard.h"

namespace tavin::copy {
namespace {

constexpr std::uint16_t keyInPositionC = 8;

}  // namespace

// The key going down, which types the whole command: this process may end between two events.
class CopyKeyboard::CopyEvent final : public KeyboardEvent {
 public:
  explicit CopyEvent(CopyKeyboard& keyboard) : keyboard_(keyboard) {}

  void setFlags(std::uint64_t flags) override { flags_ = flags; }
  void post() override {
    // Anything but the copy command types nothing.
    if (flags_ != EventFlags::command || keyboard_.closed_)
      return;
    keyboard_.key_->type();
    keyboard_.lastTyped_ = std::chrono::steady_clock::now();
    ++keyboard_.commandsTyped_;
  }

 private:
  CopyKeyboard& keyboard_;
  std::uint64_t flags_ = 0;
};

// The key going up. The command released its keys itself, so nothing is left to do.
class CopyKeyboard::ReleasedEvent final : public KeyboardEvent {
 public:
  void setFlags(std::uint64_t) override {}
  void post() override {}
};

std::unique_ptr<KeyboardEvent> CopyKeyboard::createKeyboardEvent(std::uint16_t keyCode, bool down) {
  if (keyCode != keyInPositionC)
    return nullptr;
  if (!down)
    return std::exchange(downMade_, false) ? std::make_unique<ReleasedEvent>() : nullptr;
  downMade_ = !closed_ && isReady() && key_->prepare();
  return downMade_ ? std::make_unique<CopyEvent>(*this) : nullptr;
}

}  // namespace tavin::copy
