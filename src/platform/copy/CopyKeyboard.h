#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Keyboard.h"
#include "platform/copy/CopyKey.h"

namespace tavin::copy {

// The keyboard of a session: its one event is the copy command. The key going down types the whole
// of it, so that between two events no key is held, and either of them may stay away. Work queue
// only, save canType() and close().
class CopyKeyboard final : public Keyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys. `key` is null in a session that
  // lets no program type: then no event can be made.
  CopyKeyboard(std::unique_ptr<CopyKey> key, std::function<bool()> mayCopy)
      : key_(std::move(key)), mayCopy_(std::move(mayCopy)) {}

  std::uint64_t flagsState() override { return key_ ? key_->heldModifiers() : 0; }
  std::unique_ptr<KeyboardEvent> createKeyboardEvent(std::uint16_t keyCode, bool down) override;

  // Whether this session lets us type at all. Any thread.
  bool canType() const { return key_ != nullptr; }
  // Whether a copy can be made now, from the program in front. The user is asked for permission
  // only where that program may get the keys.
  bool isReady() { return key_ && mayCopy_() && key_->isPermitted(); }
  // From now on nothing is typed. Any thread.
  void close() { closed_ = true; }
  // How often the command was typed so far, and when it last was.
  int commandsTyped() const { return commandsTyped_; }
  std::chrono::steady_clock::time_point lastTyped() const { return lastTyped_; }

 private:
  class CopyEvent;
  class ReleasedEvent;

  const std::unique_ptr<CopyKey> key_;
  const std::function<bool()> mayCopy_;
  std::atomic<bool> closed_ = false;
  // Whether the last key going down could be made: then one going up belongs to it.
  bool downMade_ = false;
  int commandsTyped_ = 0;
  std::chrono::steady_clock::time_point lastTyped_;
};

}  // namespace tavin::copy
