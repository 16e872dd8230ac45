#pragma once

#include <cstdint>

namespace tavin::copy {

// What a back end does for the copy command, which it types as Control+Insert: Control+C would end
// what runs in a terminal. Whether the program in front may get the keys is none of its business.
// Work queue only, every call bounded in time.
class CopyKey {
 public:
  virtual ~CopyKey() = default;
  // The modifiers that the user holds down now, as EventFlags; 0 where they do not matter.
  virtual std::uint64_t heldModifiers() = 0;
  // Whether the user lets us type. Where the permission is missing, asking begins, and the answer
  // is no meanwhile.
  virtual bool isPermitted() { return true; }
  // Whether the command can be typed now: not while a modifier is held that would join it. What the
  // command needs is kept until it is typed, if ever.
  virtual bool prepare() { return heldModifiers() == 0; }
  // Presses and releases the keys, so that none is held between two calls; when it returns, the
  // program in front has been sent them all.
  virtual void type() = 0;
};

}  // namespace tavin::copy
