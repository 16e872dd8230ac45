#pragma once

#include <memory>
#include <set>

#include "platform/x11/Connection.h"

namespace tavin::test {

// An old-style tray: takes icons' requests to dock and notes which are there.
class FakeXEmbedTray {
 public:
  FakeXEmbedTray();

  // How many icons there are now.
  std::size_t docked();

 private:
  void handle(const xcb_generic_event_t& event);

  std::unique_ptr<x11::Connection> connection_ = x11::Connection::open();
  xcb_window_t window_ = 0;
  std::set<xcb_window_t> icons_;
};

}  // namespace tavin::test
