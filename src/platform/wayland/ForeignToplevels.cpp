#include <cstring>

#include "platform/wayland/Listener.h"
#include "platform/wayland/WindowSources.h"

namespace tavin::wayland {
namespace {

constexpr std::uint32_t newestVersion = 3;

bool holdsState(const wl_array& states, std::uint32_t wanted) {
  const auto* begin = static_cast<const char*>(states.data);
  for (std::size_t at = 0; at + sizeof(wanted) <= states.size; at += sizeof(wanted)) {
    std::uint32_t state = 0;
    std::memcpy(&state, begin + at, sizeof(state));
    if (state == wanted)
      return true;
  }
  return false;
}

void noteAppId(ListedWindow& window, const char* id) { window.toplevel.appId = id; }

void noteStates(ListedWindow& window, wl_array* states) {
  window.active = holdsState(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
}

constexpr auto toplevelEvents = [] {
  auto events = ignoringAll<zwlr_foreign_toplevel_handle_v1_listener>();
  events.app_id = calls<noteAppId>;
  events.state = calls<noteStates>;
  events.done = calls<&ListedWindow::changed>;
  events.closed = calls<&ListedWindow::closed>;
  return events;
}();

void addToplevel(WindowWatch& watch, zwlr_foreign_toplevel_handle_v1* handle) {
  Owned<zwlr_foreign_toplevel_handle_v1> owned(handle);
  if (watch.isFull())
    return;
  ListedWindow& window = watch.add(std::move(owned));
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &toplevelEvents, &window);
}

constexpr zwlr_foreign_toplevel_manager_v1_listener toplevelManagerEvents{
    .toplevel = calls<addToplevel>, .finished = ignored};

}  // namespace

WindowSource foreignToplevels(Connection& connection, WindowWatch& watch) {
  auto manager = connection.bind<zwlr_foreign_toplevel_manager_v1>(
      zwlr_foreign_toplevel_manager_v1_interface, newestVersion);
  if (!manager)
    return {};
  zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &toplevelManagerEvents, &watch);
  return {"foreign-toplevel", std::move(manager)};
}

}  // namespace tavin::wayland
