#pragma once

#include <map>
#include <optional>
#include <utility>

#include "platform/Deadline.h"
#include "platform/x11/ClipboardContents.h"

namespace tavin::x11 {

// Sends what is too large for one property, piece by piece as the requestor takes it (INCR of the
// ICCCM). Any number of transfers go on side by side; one whose requestor stops taking pieces is
// dropped. Used by the clipboard's thread alone, which passes the events in.
class IncrementalTransfers {
 public:
  // `idleSeconds`: a requestor that took nothing for so long has forgotten its transfer.
  IncrementalTransfers(const Connection& connection, double idleSeconds);

  // The largest data that goes in one piece, in bytes.
  static constexpr qsizetype pieceSize = 256 << 10;

  void begin(xcb_window_t requestor, xcb_atom_t property, const ClipboardTarget& target);
  // The requestor has taken a piece.
  void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);
  void windowGone(xcb_window_t requestor);
  void dropIdle();
  // Whether one goes to a window of the client that made this one.
  bool goesTo(xcb_window_t window) const;
  // When dropIdle() has something to do next; none without transfers.
  std::optional<Deadline> nextDeadline() const;

 private:
  struct Transfer {
    ClipboardTarget target;
    qsizetype sent = 0;
    Deadline idleUntil;
  };
  using Key = std::pair<xcb_window_t, xcb_atom_t>;
  void stopListening(xcb_window_t requestor);

  const Connection& connection_;
  const double idleSeconds_;
  xcb_atom_t incr_;
  std::map<Key, Transfer> transfers_;
};

}  // namespace tavin::x11
