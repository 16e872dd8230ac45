#pragma once

#include <cstdint>
#include <future>
#include <memory>
#include <utility>

#include "platform/copy/CopyChord.h"
#include "platform/copy/CopyKey.h"
#include "platform/wayland/Connection.h"
#include "platform/wayland/Keymap.h"
#include "platform/wayland/KwinModifiers.h"

namespace tavin::wayland {

// Types the copy command through KWin's fake input. KWin takes it for the user's own keyboard: what
// the user still holds down would join the command. Up to Plasma 5 KWin tells nobody what that is,
// so all of it is released first; later it cannot be released, and no event is made while KWin
// says that a modifier is held. It offers this, and says that, without a question to a program
// whose desktop file asks for both. Work queue only.
class FakeInput final : public copy::CopyKey {
 public:
  // Null where it is not offered, and where held keys are neither told nor released.
  static std::unique_ptr<FakeInput> create();

  // Asked before each command, so it is here that a KWin started again is connected to, beside the
  // caller: bounded by a tenth of a second. Until that is done it says Alt, as KwinModifiers does.
  std::uint64_t heldModifiers() override;
  // Not where the user's layout lacks one of the keys either.
  bool prepare() override;
  void type() override;

 private:
  // A connection, and what is on it, which must not outlive it.
  struct Line {
    std::shared_ptr<Connection> connection;
    Owned<org_kde_kwin_fake_input> input;
    std::unique_ptr<Keymap> keymap;
    std::unique_ptr<KwinModifiers> states;  // Null where KWin releases them.
  };
  explicit FakeInput(std::unique_ptr<Line> line) : line_(std::move(line)) {}
  // Null where it is not offered, or not in time.
  static std::unique_ptr<Line> connect();
  bool renew();

  std::unique_ptr<Line> line_;  // Never null.
  copy::ChordInLayout chord_;
  std::future<std::unique_ptr<Line>> next_;  // That is being made.
};

}  // namespace tavin::wayland
