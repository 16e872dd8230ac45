#pragma once

#include <poll.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/Deadline.h"
#include "platform/wayland/Proxies.h"

namespace tavin::wayland {

// A connection to the compositor of its own, so that its events and its waits disturb no other
// part. One thread at a time. Closed on destruction.
class Connection {
 public:
  // Null where WAYLAND_DISPLAY is not set, there is no compositor, or it does not answer in time.
  static std::unique_ptr<Connection> open(Deadline deadline);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The highest version of an interface that is offered; 0 where it is not.
  std::uint32_t offered(const std::string& interface) const;
  // Binds the global with the interface's name, with `highest` or the version offered; null where
  // it is not offered. `interface` must live as long as the connection.
  template <typename T, typename Destroy = DestroyProxy>
  std::unique_ptr<T, Destroy> bind(const wl_interface& interface, std::uint32_t highest) {
    return std::unique_ptr<T, Destroy>(static_cast<T*>(bindGlobal(interface, highest)));
  }
  // The user's keyboard, pointer and selections; null where there is none.
  wl_seat* seat() const { return seat_.get(); }
  // No further global is bound: their coming and going is ignored from now on.
  void bindingIsDone() { registry_.reset(); }

  // Sends what waits to be sent, and handles the events that came. Waits for them or for one of
  // `others`, `timeoutMs` at most. False when the connection is broken.
  bool turn(std::vector<pollfd>& others, int timeoutMs);
  // Waits until the compositor has done all that was asked. False where it does not in time.
  bool roundTrip(Deadline deadline);
  // Whether it is known to have failed for good, as when the compositor has ended.
  bool isBroken() const { return wl_display_get_error(display_) != 0; }

 private:
  explicit Connection(wl_display* display);
  void globalCame(std::uint32_t name, const char* interface, std::uint32_t version);
  void globalWent(std::uint32_t name);
  void* bindGlobal(const wl_interface& interface, std::uint32_t highest);

  struct Global {
    std::uint32_t name;
    std::uint32_t version;
  };

  wl_display* const display_;
  Owned<wl_registry> registry_;
  std::map<std::string, Global> globals_;  // The first of each kind.
  Owned<wl_seat> seat_;
};

}  // namespace tavin::wayland
