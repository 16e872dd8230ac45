#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

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
  // The atom of that name, made where it is missing; 0 when the connection is broken.
  xcb_atom_t atom(std::string_view name) const;

 private:
  Connection(xcb_connection_t* connection, xcb_screen_t* screen);

  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
};

}  // namespace tavin::x11
