#include "platform/wayland/Connection.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "platform/wayland/Listener.h"

namespace tavin::wayland {
namespace {

void noteDone(bool& done, std::uint32_t) { done = true; }

}  // namespace

std::unique_ptr<Connection> Connection::open(Deadline deadline) {
  const char* name = std::getenv("WAYLAND_DISPLAY");
  wl_display* display = name && *name ? wl_display_connect(name) : nullptr;
  if (!display)
    return nullptr;
  std::unique_ptr<Connection> connection(new Connection(display));
  if (!connection->roundTrip(deadline))
    return nullptr;
  connection->seat_ = connection->bind<wl_seat>(wl_seat_interface, 1);
  return connection;
}

Connection::Connection(wl_display* display)
    : display_(display), registry_(wl_display_get_registry(display)) {
  static constexpr wl_registry_listener events{.global = calls<&Connection::globalCame>,
                                               .global_remove = calls<&Connection::globalWent>};
  wl_registry_add_listener(registry_.get(), &events, this);
}

void Connection::globalCame(std::uint32_t name, const char* interface, std::uint32_t version) {
  globals_.try_emplace(interface, Global{name, version});
}

void Connection::globalWent(std::uint32_t name) {
  std::erase_if(globals_, [name](const auto& global) { return global.second.name == name; });
}

Connection::~Connection() {
  seat_.reset();
  registry_.reset();
  wl_display_disconnect(display_);
}

std::uint32_t Connection::offered(const std::string& interface) const {
  const auto global = globals_.find(interface);
  return global == globals_.end() ? 0 : global->second.version;
}

void* Connection::bindGlobal(const wl_interface& interface, std::uint32_t highest) {
  const auto global = globals_.find(interface.name);
  if (global == globals_.end() || !registry_)
    return nullptr;
  return wl_registry_bind(registry_.get(), global->second.name, &interface,
                          std::min(highest, global->second.version));
}

bool Connection::turn(std::vector<pollfd>& others, int timeoutMs) {
  // What handlers did may have changed what is to be waited for, so the caller decides again.
  if (wl_display_prepare_read(display_) != 0)
    return wl_display_dispatch_pending(display_) >= 0;
  const bool sent = wl_display_flush(display_) >= 0;
  if (!sent && errno != EAGAIN && errno != EPIPE) {
    wl_display_cancel_read(display_);
    return false;
  }
  const short events = sent || errno == EPIPE ? POLLIN : POLLIN | POLLOUT;
  others.push_back({wl_display_get_fd(display_), events, 0});
  poll(others.data(), others.size(), timeoutMs);
  const short happened = others.back().revents;
  others.pop_back();
  if ((happened & (POLLIN | POLLERR | POLLHUP)) == 0) {
    wl_display_cancel_read(display_);
    return true;
  }
  return wl_display_read_events(display_) >= 0 && wl_display_dispatch_pending(display_) >= 0;
}

bool Connection::roundTrip(Deadline deadline) {
  bool done = false;
  static constexpr wl_callback_listener events{.done = calls<noteDone>};
  const Owned<wl_callback> callback(wl_display_sync(display_));
  wl_callback_add_listener(callback.get(), &events, &done);
  std::vector<pollfd> others;
  while (!done && !deadline.passed()) {
    if (!turn(others, deadline.remainingMs()))
      return false;
  }
  return done;
}

}  // namespace tavin::wayland
