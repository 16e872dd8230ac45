#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/Deadline.h"

namespace tavin::x11 {

// Releases what xcb allocated with malloc.
struct Free {
  void operator()(void* pointer) const { std::free(pointer); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

// Whether the display answers whoever connects to it. Those over a network are not asked. Any
// thread.
bool displayAnswers(Deadline deadline);

// A connection to the display of its own, so that its events and its waits disturb no other part.
// One thread at a time. Closed on destruction.
class Connection {
 public:
  // Null where there is no display, it refuses, or it says nothing for two seconds.
  static std::unique_ptr<Connection> open();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  xcb_connection_t* get() const { return connection_; }
  xcb_screen_t* screen() const { return screen_; }
  xcb_window_t root() const { return screen_->root; }
  // The atom of that name, made where it is missing; 0 when the connection is broken, and for good
  // where the display failed to make one of the usual ones.
  xcb_atom_t atom(std::string_view name) const;
  // Waits until the display has done all that was asked of it and its events are here. False when
  // the connection is broken.
  bool roundTrip() const;
  // Null where the display has no such extension.
  const xcb_query_extension_reply_t* extension(xcb_extension_t& id) const;
  // A window that is never shown; `events` are those of its own that are to be told.
  xcb_window_t createHiddenWindow(std::uint32_t events = 0) const;
  // None where nobody owns it.
  xcb_window_t ownerOf(xcb_atom_t selection) const;
  // Makes the notices of selections usable: the number of their event, none where there are none.
  std::optional<std::uint8_t> prepareSelectionNotices() const;
  // Each change of the selection's owner is told to the window from now on, or no more.
  void tellOwners(xcb_atom_t selection, xcb_window_t window, bool tell = true) const;

 private:
  Connection(xcb_connection_t* connection, xcb_screen_t* screen);
  void askUsualAtoms() const;

  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
  mutable std::vector<xcb_atom_t> usualAtoms_;  // Empty until one is wanted.
};

}  // namespace tavin::x11
