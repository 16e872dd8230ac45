#pragma once

#include <optional>
#include <vector>

#include "platform/atspi/Bus.h"

namespace tavin::atspi {

// The object that has the keyboard, as its program tells.
struct FocusedObject {
  ObjectRef object;
  ObjectRef parent;
  Role role = Role::unknown;
  States states;
  bool hasText = false;
  int characters = 0;
  int selections = 0;
  bool password = false;
};

struct FocusSearch {
  std::optional<FocusedObject> focus;
  std::vector<ObjectRef> windows;  // Of the program, the active ones first.
  bool inActiveWindow = false;     // The focus is in a window that says it is the active one.
  bool walked = false;             // Searched without the help of Collection.
};

// Looks through a program's active windows, else through all of its windows, for the object that
// has the keyboard. Of several that say so, the deepest with text is meant.
FocusSearch findFocus(Bus& bus, const ObjectRef& program, Deadline deadline);

}  // namespace tavin::atspi
