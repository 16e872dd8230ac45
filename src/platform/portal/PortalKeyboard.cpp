#include "platform/portal/PortalKeyboard.h"

#include <linux/input-event-codes.h>

#include <utility>

namespace tavin::portal {
namespace {

constexpr std::uint16_t positionOfC = 8;
constexpr int modifierKeys[] = {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL,
                                KEY_LEFTALT,   KEY_RIGHTALT,   KEY_LEFTMETA, KEY_RIGHTMETA};

std::vector<KeyStep> copyChord(bool releaseFirst) {
  std::vector<KeyStep> steps;
  if (releaseFirst) {
    for (const int key : modifierKeys) steps.push_back({key, false});
  }
  steps.insert(
      steps.end(),
      {{KEY_LEFTCTRL, true}, {KEY_INSERT, true}, {KEY_INSERT, false}, {KEY_LEFTCTRL, false}});
  return steps;
}

}  // namespace

// The key going down, which types the whole chord: keys that this process holds down when it ends
// are let go of by the desktop.
class PortalKeyboard::CopyEvent final : public KeyboardEvent {
 public:
  CopyEvent(RemoteDesktop& desktop, QDBusObjectPath session, bool releaseFirst)
      : desktop_(desktop), session_(std::move(session)), releaseFirst_(releaseFirst) {}

  void setFlags(std::uint64_t flags) override { flags_ = flags; }
  void post() override {
    if (flags_ == EventFlags::command)  // Else it is no copy command, and types nothing.
      desktop_.type(session_, copyChord(releaseFirst_));
  }

 private:
  RemoteDesktop& desktop_;
  const QDBusObjectPath session_;
  const bool releaseFirst_;
  std::uint64_t flags_ = 0;
};

// The key going up. The chord let go of its keys itself, so nothing is left to do.
class PortalKeyboard::ReleasedEvent final : public KeyboardEvent {
 public:
  void setFlags(std::uint64_t) override {}
  void post() override {}
};

PortalKeyboard::PortalKeyboard(std::shared_ptr<RemoteDesktop> desktop,
                               std::function<bool()> mayCopy, ModifierHabits modifiers)
    : desktop_(std::move(desktop)),
      mayCopy_(std::move(mayCopy)),
      modifiers_(std::move(modifiers)) {}

std::uint64_t PortalKeyboard::flagsState() { return modifiers_.held ? modifiers_.held() : 0; }

std::unique_ptr<KeyboardEvent> PortalKeyboard::createKeyboardEvent(std::uint16_t keyCode,
                                                                   bool down) {
  if (keyCode != positionOfC)
    return nullptr;
  if (!down)
    return std::exchange(chordMade_, false) ? std::make_unique<ReleasedEvent>() : nullptr;
  auto event = createCopyEvent();
  chordMade_ = event != nullptr;
  return event;
}

std::unique_ptr<KeyboardEvent> PortalKeyboard::createCopyEvent() {
  if (!mayCopy_())
    return nullptr;  // And nobody is asked for leave.
  const auto session = desktop_->sessionOrAsk();
  if (!session || flagsState() != 0)
    return nullptr;
  return std::make_unique<CopyEvent>(*desktop_, *session, modifiers_.released);
}

}  // namespace tavin::portal
