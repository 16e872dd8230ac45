#include "platform/copy/CopyChord.h"

#include <linux/input-event-codes.h>

#include <initializer_list>

namespace tavin::copy {

// Alt comes up while Control is down: one that comes up alone opens the menu bar of some programs.
std::vector<KeyStep> copyChord(bool releaseFirst) {
  std::vector<KeyStep> steps;
  const auto release = [&](std::initializer_list<int> keys) {
    if (!releaseFirst)
      return;
    for (const int key : keys) steps.push_back({key, false});
  };
  release(
      {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTMETA, KEY_RIGHTMETA});
  steps.push_back({KEY_LEFTCTRL, true});
  release({KEY_LEFTALT, KEY_RIGHTALT});
  steps.insert(steps.end(), {{KEY_INSERT, true}, {KEY_INSERT, false}, {KEY_LEFTCTRL, false}});
  return steps;
}

}  // namespace tavin::copy
