#include "platform/wayland/PlasmaWindows.h"

#include <utility>

namespace tavin::wayland {
namespace {

constexpr std::uint32_t versionWithUuids = 13;
constexpr std::uint32_t versionKnown = 16;

}  // namespace

struct PlasmaWindows::Window {
  Window(PlasmaWindows& owner, Owned<org_kde_plasma_window> newHandle)
      : list(owner), handle(std::move(newHandle)) {
    toplevel.id = WindowWatch::newId();
  }

  PlasmaWindows& list;
  Owned<org_kde_plasma_window> handle;
  Toplevel toplevel;
  bool active = false;
};

// The interfaces have gained events since, which the versions that are bound never send.
struct PlasmaWindows::Events {
  using Manager = org_kde_plasma_window_management;
  using Handle = org_kde_plasma_window;

  template <typename Object, typename... Arguments>
  static void ignore(void*, Object*, Arguments...) {}

  static void changed(Window& window) { window.list.watch_.update(window.toplevel, window.active); }
  static void appId(void* self, Handle*, const char* id) {
    static_cast<Window*>(self)->toplevel.appId = id;
    changed(*static_cast<Window*>(self));
  }
  static void process(void* self, Handle*, std::uint32_t id) {
    static_cast<Window*>(self)->toplevel.processId = id;
    changed(*static_cast<Window*>(self));
  }
  static void state(void* self, Handle*, std::uint32_t flags) {
    static_cast<Window*>(self)->active =
        (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
    changed(*static_cast<Window*>(self));
  }
  static void unmapped(void* self, Handle*) {
    static_cast<Window*>(self)->list.remove(*static_cast<Window*>(self));
  }

  static org_kde_plasma_window_listener windowEvents() {
    org_kde_plasma_window_listener events{};
    events.title_changed = ignore;
    events.app_id_changed = appId;
    events.state_changed = state;
    events.virtual_desktop_changed = ignore;
    events.themed_icon_name_changed = ignore;
    events.unmapped = unmapped;
    events.initial_state = ignore;
    events.parent_window = ignore;
    events.geometry = ignore;
    events.icon_changed = ignore;
    events.pid_changed = process;
    events.virtual_desktop_entered = ignore;
    events.virtual_desktop_left = ignore;
    events.application_menu = ignore;
    events.activity_entered = ignore;
    events.activity_left = ignore;
    events.resource_name_changed = ignore;
    return events;
  }
  static org_kde_plasma_window_management_listener managerEvents() {
    org_kde_plasma_window_management_listener events{};
    events.show_desktop_changed = ignore;
    events.window = ignore;
    events.stacking_order_changed = ignore;
    events.stacking_order_uuid_changed = ignore;
    events.window_with_uuid = [](void* self, Manager*, std::uint32_t, const char* uuid) {
      static_cast<PlasmaWindows*>(self)->add(uuid);
    };
    return events;
  }
};

std::unique_ptr<PlasmaWindows> PlasmaWindows::create(Connection& connection, WindowWatch& watch) {
  const wl_interface& interface = org_kde_plasma_window_management_interface;
  if (connection.offered(interface.name) < versionWithUuids)
    return nullptr;
  return std::unique_ptr<PlasmaWindows>(new PlasmaWindows(
      connection.bind<org_kde_plasma_window_management>(interface, versionKnown), watch));
}

PlasmaWindows::PlasmaWindows(Owned<org_kde_plasma_window_management> manager, WindowWatch& watch)
    : manager_(std::move(manager)), watch_(watch) {
  static const auto listener = Events::managerEvents();
  org_kde_plasma_window_management_add_listener(manager_.get(), &listener, this);
}

PlasmaWindows::~PlasmaWindows() = default;

void PlasmaWindows::add(const char* uuid) {
  if (windows_.size() == mostWindows)
    return;
  Owned<org_kde_plasma_window> handle(
      org_kde_plasma_window_management_get_window_by_uuid(manager_.get(), uuid));
  windows_.push_back(std::make_unique<Window>(*this, std::move(handle)));
  static const auto listener = Events::windowEvents();
  org_kde_plasma_window_add_listener(windows_.back()->handle.get(), &listener,
                                     windows_.back().get());
}

void PlasmaWindows::remove(const Window& window) {
  watch_.remove(window.toplevel.id);
  std::erase_if(windows_, [&window](const auto& entry) { return entry.get() == &window; });
}

}  // namespace tavin::wayland
