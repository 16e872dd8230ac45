#pragma once

#include <functional>
#include <memory>

#include "platform/desktop/CopyKeyboard.h"
#include "platform/wayland/Connection.h"

namespace tavin::wayland {

// Types the copy command through KWin's fake input. KWin takes it for the user's own keyboard, so
// what the user still holds down is let go of first; it tells nobody what that is. It offers this
// without a question to a program whose desktop file asks for it. Work queue only.
class FakeInput final : public desktop::CopyKeyboard {
 public:
  // `mayCopy` tells whether the program in front may get the keys. Null where it is not offered.
  static std::unique_ptr<FakeInput> create(std::function<bool()> mayCopy);

  std::uint64_t flagsState() override { return 0; }

 private:
  FakeInput(std::unique_ptr<Connection> connection, Owned<org_kde_kwin_fake_input> input,
            std::function<bool()> mayCopy);
  void typeChord() override;

  const std::unique_ptr<Connection> connection_;
  const Owned<org_kde_kwin_fake_input> input_;
};

}  // namespace tavin::wayland
