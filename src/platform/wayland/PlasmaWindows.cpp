#include "platform/wayland/Listener.h"
#include "platform/wayland/WindowSources.h"

namespace tavin::wayland {
namespace {

constexpr std::uint32_t versionWithUuids = 13;
constexpr std::uint32_t versionKnown = 16;

void setAppId(ListedWindow& window, const char* id) {
  window.toplevel.appId = id;
  window.changed();
}

void setProcess(ListedWindow& window, std::uint32_t id) {
  window.toplevel.processId = id;
  window.changed();
}

void setState(ListedWindow& window, std::uint32_t flags) {
  window.active = (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
  window.changed();
}

constexpr auto windowEvents = [] {
  auto events = ignoringAll<org_kde_plasma_window_listener>();
  events.app_id_changed = calls<setAppId>;
  events.state_changed = calls<setState>;
  events.pid_changed = calls<setProcess>;
  events.unmapped = calls<&ListedWindow::closed>;
  return events;
}();

void addWindow(WindowWatch& watch, org_kde_plasma_window_management* manager, std::uint32_t,
               const char* uuid) {
  if (watch.isFull())
    return;
  auto* const object = org_kde_plasma_window_management_get_window_by_uuid(manager, uuid);
  ListedWindow& window = watch.add(Owned<org_kde_plasma_window>(object));
  org_kde_plasma_window_add_listener(object, &windowEvents, &window);
}

constexpr auto managerEvents = [] {
  auto events = ignoringAll<org_kde_plasma_window_management_listener>();
  events.window_with_uuid = calls<addWindow>;
  return events;
}();

}  // namespace

WindowSource plasmaWindows(Connection& connection, WindowWatch& watch) {
  const wl_interface& interface = org_kde_plasma_window_management_interface;
  if (connection.offered(interface.name) < versionWithUuids)
    return {};
  auto manager = connection.bind<org_kde_plasma_window_management>(interface, versionKnown);
  org_kde_plasma_window_management_add_listener(manager.get(), &managerEvents, &watch);
  return {plasmaWindowsName, std::move(manager)};
}

}  // namespace tavin::wayland
