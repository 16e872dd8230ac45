#pragma once

#include <map>
#include <optional>

#include "platform/Deadline.h"
#include "platform/x11/IncrementalTransfers.h"

namespace tavin::x11 {

// Answers other programs that ask for what we offer in a selection, as the ICCCM says. Used by the
// clipboard's thread alone.
class ClipboardAnswers {
 public:
  ClipboardAnswers(const Connection& connection, double transferIdleSeconds);

  // `since` is the server's time at which the selection was claimed.
  void offer(ClipboardContents contents, xcb_timestamp_t since);
  // Transfers that have begun go on: they hold their own data.
  void withdraw();
  bool offersAnything() const { return !contents_.empty(); }
  // The targets that are worth keeping after our end.
  std::vector<xcb_atom_t> targets() const;

  void answer(const xcb_selection_request_event_t& request);
  // When the client that made this window counts as done with reading what is offered: later while
  // it goes on; none where it has read nothing since it was offered, or since forgetReaders().
  std::optional<Deadline> readerDoneAt(xcb_window_t window);
  void forgetReaders() { readers_.clear(); }
  IncrementalTransfers& transfers() { return transfers_; }
  const IncrementalTransfers& transfers() const { return transfers_; }

 private:
  bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
  void put(xcb_window_t requestor, xcb_atom_t property, const ClipboardTarget& value);

  const Connection& connection_;
  IncrementalTransfers transfers_;
  ClipboardContents contents_;
  std::map<std::uint32_t, Deadline> readers_;  // Of these contents, by client.
  xcb_timestamp_t since_ = XCB_CURRENT_TIME;
  const xcb_atom_t targetsAtom_, timestamp_, multiple_, saveTargets_, atomPair_, null_;
};

}  // namespace tavin::x11
