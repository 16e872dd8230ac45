#include "window_list.h"

#include "plasma-window-management-client-protocol.h"

namespace {

constexpr std::uint32_t boundVersion = 16;
constexpr std::uint32_t active = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;

}  // namespace

struct WindowList::Events {
  using Handle = org_kde_plasma_window;

  template <typename Object, typename... Arguments>
  static void ignore(void*, Object*, Arguments...) {}
  static Window& of(void* data) { return *static_cast<Window*>(data); }

  static org_kde_plasma_window_listener ofWindow() {
    org_kde_plasma_window_listener events{};
    events.title_changed = [](void* data, Handle*, const char* title) { of(data).title = title; };
    events.app_id_changed = [](void* data, Handle*, const char* id) { of(data).program = id; };
    events.state_changed = [](void* data, Handle*, std::uint32_t flags) { of(data).state = flags; };
    events.virtual_desktop_changed = ignore;
    events.themed_icon_name_changed = ignore;
    events.unmapped = [](void* data, Handle*) { of(data).shown = false; };
    events.initial_state = ignore;
    events.parent_window = ignore;
    events.geometry = [](void* data, Handle*, std::int32_t x, std::int32_t y, std::uint32_t width,
                         std::uint32_t height) {
      of(data).x = x;
      of(data).y = y;
      of(data).width = width;
      of(data).height = height;
    };
    events.icon_changed = ignore;
    events.pid_changed = [](void* data, Handle*, std::uint32_t pid) { of(data).process = pid; };
    events.virtual_desktop_entered = ignore;
    events.virtual_desktop_left = ignore;
    events.application_menu = ignore;
    events.activity_entered = ignore;
    events.activity_left = ignore;
    events.resource_name_changed = ignore;
    return events;
  }

  static void found(void* data, org_kde_plasma_window_management* manager, std::uint32_t,
                    const char* uuid) {
    auto& windows = static_cast<WindowList*>(data)->windows_;
    windows.push_back(std::make_unique<Window>());
    windows.back()->uuid = uuid;
    windows.back()->handle = org_kde_plasma_window_management_get_window_by_uuid(manager, uuid);
    static const auto events = ofWindow();
    org_kde_plasma_window_add_listener(windows.back()->handle, &events, windows.back().get());
  }

  static org_kde_plasma_window_management_listener ofManager() {
    org_kde_plasma_window_management_listener events{};
    events.show_desktop_changed = ignore;
    events.window = ignore;
    events.stacking_order_changed = ignore;
    events.stacking_order_uuid_changed = ignore;
    events.window_with_uuid = found;
    return events;
  }
};

WindowList::WindowList(wl_registry* registry, std::uint32_t name)
    : manager_(static_cast<org_kde_plasma_window_management*>(wl_registry_bind(
          registry, name, &org_kde_plasma_window_management_interface, boundVersion))) {
  static const auto events = Events::ofManager();
  org_kde_plasma_window_management_add_listener(manager_, &events, this);
}

WindowList::~WindowList() {
  for (const auto& window : windows_) org_kde_plasma_window_destroy(window->handle);
  org_kde_plasma_window_management_destroy(manager_);
}

void WindowList::print(std::ostream& out) const {
  for (const auto& window : windows_) {
    if (window->shown)
      out << window->uuid << ' ' << window->process << ' ' << ((window->state & active) != 0) << ' '
          << window->x << ' ' << window->y << ' ' << window->width << ' ' << window->height << '\t'
          << window->program << '\t' << window->title << '\n';
  }
}

bool WindowList::activate(const std::string& uuid) const {
  for (const auto& window : windows_) {
    if (!window->shown || window->uuid != uuid)
      continue;
    org_kde_plasma_window_set_state(window->handle, active, active);
    return true;
  }
  return false;
}
