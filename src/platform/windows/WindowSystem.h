#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <set>

#include "platform/Deadline.h"

namespace tavin::windows {

// The window that has the keyboard, and what its program is known to be without asking it.
struct FrontWindow {
  std::uint64_t id = 0;         // Tells windows apart; 0 where there is none.
  std::int64_t processId = 0;   // 0 where it is not known.
  bool terminal = false;        // Nothing may be typed into it.
  bool browser = false;         // Built on a browser engine.
  bool withoutCopyKey = false;  // No key makes it copy: some document viewers.
  bool unknown = false;         // Nothing is known of its program: it may be a terminal.
  bool afterMenu = false;       // A menu was chosen from, and has perhaps not closed yet.
};

// What accessibility needs to know from the window system. Work queue only, save
// menuCommandChosen(); bounded in time.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;
  // The next look at the front window waits, for half a second at most, until the tray menu has
  // closed and another window is active again. Any thread.
  virtual void menuCommandChosen() {}
  virtual FrontWindow frontWindow() = 0;
  // The processes that show windows. One of them is never another one's messenger.
  virtual std::set<std::int64_t> windowProcesses() = 0;

  // How sure it must be that the PRIMARY selection is what the front window shows as selected.
  enum class PrimaryProof {
    sameProgram,   // Its owner is the front window's program; it may be an older selection.
    takenInFront,  // It was made in the front window, which had the keyboard ever since.
  };
  // PRIMARY's text, or none where there is no such proof.
  virtual std::optional<QString> primaryText(const FrontWindow& window, PrimaryProof proof,
                                             Deadline deadline) = 0;
};

}  // namespace tavin::windows
