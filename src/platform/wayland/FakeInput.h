#pragma once

#include <cstdint>
#include <memory>

#include "platform/copy/CopyKey.h"
#include "platform/wayland/Connection.h"
#include "platform/wayland/KeyStates.h"

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

  // Asked before each command, so it is here that a KWin started again is connected to, bounded by
  // five seconds.
  std::uint64_t heldModifiers() override;
  void type() override;

 private:
  FakeInput() = default;
  bool connect();

  std::shared_ptr<Connection> connection_;
  Owned<org_kde_kwin_fake_input> input_;
  std::unique_ptr<KeyStates> states_;  // Null where KWin releases them.
};

}  // namespace tavin::wayland
