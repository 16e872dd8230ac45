#pragma once

#include "platform/copy/CopyKeyboard.h"

namespace tavin::copy {

// For a session that lets no program type: no event can be made.
class NoKeyboard final : public CopyKeyboard {
 public:
  NoKeyboard() : CopyKeyboard([] { return false; }) {}

  std::uint64_t flagsState() override { return 0; }

 private:
  void typeChord() override {}
};

}  // namespace tavin::copy
